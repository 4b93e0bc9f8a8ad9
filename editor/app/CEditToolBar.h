#pragma once

#include "host/IPluginTools.h"

#include <QToolBar>

#include <string>
#include <vector>

class CCommandList;
class CEditor;
class CEditorHost;
class CNumberBox;
class CViewArea;
class QMenu;

// The editor's own toolbar: the tools, the size and power of the brush, undo and redo, what the
// window shows and what the ground looks like. All of it is what menus, keys and the panel have,
// too: buttons are the very actions of the commands, the fields the brush's own numbers. Where
// there is no room, the rest is behind the button at the end. Owned by the window. UI thread.
class CEditToolBar : public QToolBar
{
public:
    CEditToolBar(QWidget* pParent, CEditor& editor, CViewArea& views); // borrowed

    // What is in it, once the commands are there. tools: ids of their commands. pView, pMaterials:
    // of the menu bar; null: left out.
    void Fill(const CCommandList& commands,
              const std::vector<std::string>& tools,
              QMenu* pView,
              QMenu* pMaterials);

    void Follow(); // shows the brush as it is now

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override; // the fields

private:
    CNumberBox* AddNumber(const char* pszName, const char* pszLabel, EBrushValue eValue);
    void AddMenu(const char* pszName, const char* pszText, const QString& strTip, QMenu* pMenu);
    void SetNumber(EBrushValue eValue, double fValue);
    void FollowNumber(CNumberBox& box, EBrushValue eValue);
    void ShowKeys();
    void LeaveFields();

    CEditorHost& m_Host;
    IPluginTools* m_pTools; // null for a plug-in without
    CEditor& m_Editor;
    CViewArea& m_Views;
    CNumberBox* m_pSize = nullptr; // null until Fill
    CNumberBox* m_pPower = nullptr;
};
