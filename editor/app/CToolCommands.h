#pragma once

#include <QString>

#include <cstdint>
#include <functional>

class CCommandList;
class CEditorHost;
class CViewArea;
class IPluginTools;
class QMenu;

// The commands that take a tool and change it without the panel; what they did stands at the
// cursor. They do nothing during a stroke, because a recording has the brush as it was at the
// press. Owned by the window.
class CToolCommands
{
public:
    // Borrowed. pTools: null for a plug-in without. sendAction: an action of the plug-in.
    CToolCommands(CEditorHost& host,
                  IPluginTools* pTools,
                  CViewArea& views,
                  std::function<void(int32_t)> sendAction);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void AddTools(QMenu& menu, CCommandList& commands);
    void AddValues(QMenu& menu, CCommandList& commands);
    void AddMask(QMenu& menu, CCommandList& commands);

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
    IPluginTools* m_pTools;
    CViewArea& m_Views;
    std::function<void(int32_t)> m_SendAction;
};
