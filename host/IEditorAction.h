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
    uint32_t uKey = 0;       // default key code, 0 for none
    uint32_t uModifiers = 0; // default EKeyModifier, 0 for none
};

// Something the host lists, clones, runs and saves.
class IEditorAction
{
public:
    virtual ~IEditorAction() = default;
    virtual IEditorAction* Clone() const = 0; // owned by the caller
    virtual int32_t GetId() const = 0;        // -1 until the host assigns one
    virtual const char* GetName() const = 0;
    virtual CRTTIObject* GetRTTIObject() = 0;
    virtual const CRTTIObject* GetRTTIObject() const = 0;
    virtual std::string GetNameString() const = 0;
    virtual bool CanExecute(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) = 0;
    virtual bool Execute() = 0;
    virtual void SetFlag(uint32_t uMask, bool bOn) = 0;
    virtual uint32_t TestFlag(uint32_t uMask) const = 0;
    virtual void SaveAttribs(fs::ifile& file) = 0;
    virtual void LoadAttribs(const CTCPARSE_KEYWORD* pKeyword) = 0;
    virtual void SetId(int32_t iId) = 0;
};
