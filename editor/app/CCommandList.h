#pragma once

#include "editor/core/CKeyBindings.h"

#include <functional>
#include <initializer_list>
#include <map>
#include <string>

class QAction;
class QMenu;
class QWidget;

// All that the editor knows of one of its commands: a row of the table of its menu.
struct SCommand
{
    const char* pszId = nullptr;   // in the key file, never shown; null: a line between commands
    const char* pszText = nullptr; // a key of Words; the key dialog leaves out '&' and "..."
    SKeyChord key = {};            // until a person chooses another
    // Null: the key works as long as it is held. The views look for it themselves, and no menu
    // shows it.
    std::function<void()> run = nullptr;
    // What the menu shows at present, asked whenever the list follows. Null: the command can always
    // be chosen, has no check mark, keeps its text.
    std::function<bool()> isEnabled = nullptr;
    std::function<bool()> isChecked = nullptr;
    std::function<const char*()> getText = nullptr;
    bool bOnce = false; // see Once

    // The rows of a table, one of these each.
    static SCommand Run(const char* pszId,
                        const char* pszText,
                        SKeyChord key,
                        std::function<void()> run,
                        std::function<bool()> isEnabled = nullptr);
    // A command that a key runs once, however long it is held; others are repeated then.
    static SCommand
    Once(const char* pszId, const char* pszText, SKeyChord key, std::function<void()> run);
    static SCommand Hold(const char* pszId, const char* pszText, SKeyChord key);

    static SCommand Line() { return {}; }
};

// The commands of the window: what menus show and what keys reach. Each is known to the key
// bindings under its id. Owned by the window.
class CCommandList
{
public:
    CCommandList(QWidget& window, CKeyBindings& keys); // both borrowed

    // Appends the rows to the menu. What they run is borrowed to the end of the window.
    void Add(QMenu& menu, std::initializer_list<SCommand> commands);
    // Lets keys reach the plug-in's actions, which are in the key bindings already.
    void AddPluginActions(const std::function<void(int32_t)>& onAction);

    // Commands whose ids begin so cannot be chosen while hasLevel, which is asked whenever the list
    // follows, is false. Once all of them are there.
    void NeedLevel(std::initializer_list<const char*> beginnings,
                   const std::function<bool()>& hasLevel);

    void ApplyKeys(); // the bindings have changed
    void Follow();    // the menus show the commands as they are now

    QAction* Find(const char* pszId) const; // null when there is none

private:
    struct SShown
    {
        QAction* pAction = nullptr; // the window's
        SCommand command;           // empty for an action of the plug-in
    };

    QAction* MakeAction(const SCommand& command);

    QWidget& m_Window;
    CKeyBindings& m_Keys;
    std::map<std::string, SShown> m_Shown; // by id
};
