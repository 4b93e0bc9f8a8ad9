#pragma once

#include "host/IEditorAction.h"
#include "host/Reflection.h"

class EngineHost;

// An editor action whose tunable members are reflected fields, kept as "attrib" lines. Owned by the
// host once registered.
class CEditorAction : public IEditorAction, public CRTTIObject
{
public:
    static const CRTTI s_RTTI;

    int32_t GetId() const override { return m_Id; }

    CRTTIObject* GetRTTIObject() override { return this; }

    const CRTTIObject* GetRTTIObject() const override { return this; }

    std::string GetNameString() const override { return GetName(); }

    void SetFlag(uint32_t uMask, bool bOn) override;

    uint32_t TestFlag(uint32_t uMask) const override { return m_Flags & uMask; }

    void SaveAttribs(fs::ifile& file) override;
    void LoadAttribs(const CTCPARSE_KEYWORD* pKeyword) override;

    void SetId(int32_t iId) override { m_Id = iId; }

    virtual void SaveAttrib(fs::ifile& file, const CRTTIField* pField);
    // Reads one field from a keyword "attrib". Other keywords and unknown fields are skipped.
    virtual void LoadAttrib(const CTCPARSE_KEYWORD* pKeyword);

    // The level's object with that id, borrowed; null without one and before Initialize.
    CRTTIObject* FindObjectByID(int32_t iId) const;
    // The engine that FindObjectByID asks, null to forget it.
    static void PublishEngineHost(EngineHost* pEngineHost);

protected:
    explicit CEditorAction(uint32_t uFlags);
    CEditorAction(const CEditorAction& other); // same flags, no id
    CEditorAction& operator=(const CEditorAction&) = delete;

private:
    int32_t m_Id = -1;
    uint32_t m_Flags;
};

// An action that does a piece of work on the level.
class CEditorProcess : public CEditorAction
{
public:
    static const CRTTI s_RTTI;

protected:
    CEditorProcess();
};
