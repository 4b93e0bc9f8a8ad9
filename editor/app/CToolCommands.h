#pragma once

#include "host/IPluginTools.h"

#include <QString>

#include <string>
#include <vector>

class CCommandList;
class CEditor;
class CEditorHost;
class CPluginCommands;
class CViewArea;
class QMenu;

// The commands that take a tool and change it without the panel; what they did stands at the
// cursor. They do nothing during a stroke, because a recording has the brush as it was at the
// press. Made once the plug-in is loaded, owned by the menus.
class CToolCommands
{
public:
    CToolCommands(CEditor& editor, CViewArea& views, CPluginCommands& plugin); // borrowed

    void AddTo(QMenu& menu, CCommandList& commands);

    // The ids of the commands that take the tools, in their order.
    std::vector<std::string> GetToolIds() const;

private:
    struct STool
    {
        std::string strId; // of its command
        SToolOffer offer;
    };

    bool IsAtHand(const STool& tool) const;
    bool IsReady() const;     // there is a plug-in to ask, and no stroke
    bool IsSculpting() const; // with a tool; says so otherwise
    void Take(const char* pszFunction);
    void Toggle();
    void ScaleExtent(bool bLarger);
    void Invert();
    void PickHeight();
    void SwitchMask();
    void ChooseMask();
    QString GetToolName() const;
    void Say(const QString& strText) const; // at the cursor
    void Follow();                          // views and cursor show another tool

    CEditorHost& m_Host;
    IPluginTools* m_pTools; // null for a plug-in without
    CViewArea& m_Views;
    CPluginCommands& m_Plugin;
    std::vector<STool> m_Tools; // what commands of tools borrow
};
