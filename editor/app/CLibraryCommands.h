#pragma once

class CBrushLibraryDock;
class CCommandList;
class CViewArea;
class QMenu;

// The commands of the library of brushes that work everywhere in the window; what is done to a
// brush has its keys in the library itself. Owned by the menus.
class CLibraryCommands
{
public:
    CLibraryCommands(CBrushLibraryDock& library, CViewArea& views); // borrowed

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void GoToLibrary();

    CBrushLibraryDock& m_Library;
    CViewArea& m_Views;
};
