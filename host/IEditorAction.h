#pragma once

#include <cstdint>
#include <string>

namespace fs
{
class ifile;
}
class CRTTIField;
class CRTTIObject;
class CTCPARSE_KEYWORD;

// Two ways to give the person something to do. A keyboard action is a record with a name and a
// default key: the plug-in tells the host its list once (EditorHost::RegisterActions, from
// IPlugin::RegisterActions), the host binds keys, and IPlugin::OnAction gets the index. An editor
// action is an object of the plug-in that the host lists and runs; a process is one that does a
// piece of work on the level (EditorHost::RegisterProcess). Clone, the reflected fields and
// SaveAttribs and LoadAttribs are for hosts that keep sets of actions, which ours does not. UI
// thread.
//
// Order of calls of an object: SetId once, when it is registered; GetName for the list; for a run
// the release of a drag, CanExecute and, after a true, Execute. It is destroyed by the host before
// the library is closed.

// Modifier keys of an action's default key, joined by '|'; the same bits as the flags of mouse
// events.
enum EKeyModifier : uint32_t
{
    KEY_SHIFT = 0x4,
    KEY_CONTROL = 0x8,
    KEY_ALT = 0x20,
};

// Flags of an action, IEditorAction::SetFlag. The other bits are nobody's.
enum EActionFlag : uint32_t
{
    ACTION_PROCESS = 0x2, // it does a piece of work on the level
};

// Describes one keyboard action for EditorHost::RegisterActions; the host copies it.
struct SActionDescriptor
{
    int32_t iGroup = 0;      // mode group of the plug-in
    int32_t iIndex = 0;      // comes back as the action of IPlugin::OnAction
    std::string strName;     // shown in key-binding lists
    uint32_t uKey = 0;       // default key code (a capital letter or a sign), 0 for none
    uint32_t uModifiers = 0; // default EKeyModifier, 0 for none
};

class IEditorAction
{
public:
    virtual ~IEditorAction() = default;
    // Makes an action of the same class with the same fields and flags and the id -1, which the
    // caller owns.
    virtual IEditorAction* Clone() const = 0;
    virtual int32_t GetId() const = 0;       // -1 until the host assigns one
    virtual const char* GetName() const = 0; // shown to the person; static text
    // Its reflected fields, which a host shows and edits: this very object, never null.
    virtual CRTTIObject* GetRTTIObject() = 0;
    virtual const CRTTIObject* GetRTTIObject() const = 0;
    virtual std::string GetNameString() const = 0; // GetName, copied
    // Whether it can run now. The three numbers are the host's, 0.
    virtual bool CanExecute(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) = 0;
    // Runs it to its end; may ask the person and report progress. False when cancelled or after one
    // logged line, and the level is as it was.
    virtual bool Execute() = 0;
    virtual void SetFlag(uint32_t uMask, bool bOn) = 0;  // sets or clears the bits; EActionFlag
    virtual uint32_t TestFlag(uint32_t uMask) const = 0; // those of the mask that are set
    // Writes "attrib( name, text )" lines, one for each field, derived classes first; a fault
    // sticks to the file, which is borrowed.
    virtual void SaveAttribs(fs::ifile& file) = 0;
    // Takes such lines from the block of a parsed keyword, borrowed, null allowed; others and
    // unknown fields are skipped.
    virtual void LoadAttribs(const CTCPARSE_KEYWORD* pKeyword) = 0;
    virtual void SetId(int32_t iId) = 0; // the host's, its place in the list
};
