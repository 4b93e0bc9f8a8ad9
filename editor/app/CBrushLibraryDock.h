#pragma once

#include "editor/app/CBrushCatalogue.h"

#include <QDockWidget>
#include <QTimer>

#include <functional>

class CBrushList;
class QLabel;
class QLineEdit;
class QMenu;

// The window of the library of brushes: pictures of all of them, a filter, and what can be done to
// them by the mouse and by keys. What was done, or why not, stands in a line below. Owned by the
// window, gone before the plug-in.
class CBrushLibraryDock : public QDockWidget
{
public:
    // Borrowed. pPlugin: null for none. onTaken: a brush of the library is at hand now.
    CBrushLibraryDock(QWidget* pParent,
                      CEditorHost& host,
                      IPlugin* pPlugin,
                      std::function<void()> onTaken);

    bool HasLibrary() const { return m_Catalogue.IsThere(); }

    void Follow();    // shows the library as it is now; nothing while the dock is closed
    void TakeFocus(); // opens it, and the keyboard goes to the brush that is current there

private:
    void AddActions(QMenu& menu);
    void ShowLine(bool bDone);
    void SetRow(int iRow, const SDefinedBrush& brush);
    void Select(int iRow); // the brush that was worked with, where it is now
    void Filter();
    void Finish(bool bDone, int iRow); // of a change

    void Take();
    void Rename();
    void TakeName(int iRow, const QString& strName);
    void Duplicate();
    void Remove();
    void Step(int iStep); // the brush to the place of the next one that is shown
    void Move(int iFrom, int iTo);
    void GoBack(bool bAgain);

    CBrushCatalogue m_Catalogue;
    std::function<void()> m_OnTaken;
    QLineEdit* m_pFilter; // these are the dock's
    CBrushList* m_pList;
    QLabel* m_pLine;
    QTimer m_WidthTimer;
    bool m_bWidened = false; // for some columns of pictures, once
    QTimer m_NameTimer;      // until the editor of a name has gone
    int m_iNamed = 0;
    bool m_bNamed = false; // the name was taken
};
