#pragma once

#include "editor/core/CKeyBindings.h"

#include <functional>
#include <map>
#include <string>

class QAction;
class QMenu;
class QWidget;

// The commands of the window: what menus show and what keys reach. Each is known to the key
// bindings under its id. Owned by the window.
class CCommandList
{
public:
    using FRun = std::function<void()>;

    CCommandList(QWidget& window, CKeyBindings& keys); // both borrowed

    // pMenu: null for a command that only a key reaches. The action is the window's.
    QAction* Add(QMenu* pMenu, const char* pszId, const char* pszText, SKeyChord key, FRun run);
    // A key that works as long as it is held; the views look for it themselves.
    void AddHeld(const char* pszId, const char* pszText, SKeyChord key);
    // The plug-in's keyboard actions, which are in the key bindings already.
    void AddPluginActions(const std::function<void(int32_t)>& onAction);

    void ApplyKeys(); // the bindings have changed

    QAction* Find(const char* pszId) const; // null when there is none

private:
    QWidget& m_Window;
    CKeyBindings& m_Keys;
    std::map<std::string, QAction*> m_Actions; // by id; the window's
};
