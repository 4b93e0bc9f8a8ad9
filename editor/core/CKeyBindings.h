#pragma once

#include "host/IEditorAction.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// A key with its modifiers. Keys that print have the code of their capital letter or sign (84 is
// T, 93 is ]); the others have codes from 0x01000000 on, as the window system's key events number
// them. 0 is no key.
struct SKeyChord
{
    uint32_t uKey = 0;
    uint32_t uModifiers = 0; // EKeyModifier

    bool operator==(const SKeyChord&) const = default;
};

// Something a key can do.
struct SKeyCommand
{
    std::string strId;      // in the key file, never shown
    std::string strText;    // in the key dialog
    std::string strContext; // where the key counts; empty: everywhere
    SKeyChord defaultKey;
    SKeyChord key;
    int32_t iAction = -1; // of the plug-in (IPlugin::OnAction); -1: a command of the program
};

// Which key does what: the commands of the program and the actions of plug-ins, with the user's
// own keys, kept in a file of the user. Owned by the program; a dialog works on a copy. UI thread.
class CKeyBindings
{
public:
    // Adds a command. Its key starts as what a loaded file says, or as the default, unless the file
    // gives that one to another command. A known id is replaced.
    void Add(SKeyCommand command);
    // Adds actions of a plug-in, under ids "action.GROUP.INDEX". An action whose default key is
    // that of a command of the program, too, has none: the program's command does more.
    void AddActions(const std::vector<SActionDescriptor>& actions, const std::string& strContext);

    const std::vector<SKeyCommand>& GetCommands() const { return m_Commands; } // as they were added

    const SKeyCommand* FindById(const std::string& strId) const; // null when there is none

    bool Set(const std::string& strId, const SKeyChord& key); // false for an unknown id
    void Reset();                                             // all defaults

    // The first two commands that one key press could mean, as indices into GetCommands.
    std::optional<std::pair<size_t, size_t>> FindClash() const;

    // Reads a user's keys, also those of commands that are added later. False when there is no
    // file, or after the parser's messages; keys then stay as they are.
    bool Load(const std::string& strFile);
    // Writes what differs from the defaults and the lines of unknown ids that Load found. A file
    // that was not understood is kept first, see KeepFile. False after one logged line.
    bool Save(const std::string& strFile);

private:
    const SKeyChord* FindLoaded(const std::string& strId) const;
    void TakeOverDefaults();

    std::vector<SKeyCommand> m_Commands;
    std::vector<std::pair<std::string, SKeyChord>> m_Loaded; // by id, as the file has them
    bool m_bDamaged = false;                                 // the file that was loaded
};
