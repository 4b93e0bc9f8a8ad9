#include "tellur/plugin/CEditorAction.h"

#include "host/EngineHost.h"
#include "host/FileSystem.h"
#include "parser/KeywordValues.h"

namespace
{

EngineHost* g_pEngineHost = nullptr;

} // namespace

const CRTTI CEditorAction::s_RTTI(
    "CEditorAction", ENGINE_CLASS_ACTION, nullptr, nullptr, CRTTI::FLAG_ABSTRACT);
const CRTTI CEditorProcess::s_RTTI(
    "CEditorProcess", ENGINE_CLASS_ACTION, nullptr, &CEditorAction::s_RTTI, CRTTI::FLAG_ABSTRACT);

CEditorAction::CEditorAction(uint32_t uFlags)
    : m_Flags(uFlags)
{
}

CEditorAction::CEditorAction(const CEditorAction& other)
    : IEditorAction(other)
    , CRTTIObject(other)
    , m_Flags(other.m_Flags)
{
}

CEditorProcess::CEditorProcess()
    : CEditorAction(ACTION_PROCESS)
{
}

void CEditorAction::PublishEngineHost(EngineHost* pEngineHost)
{
    g_pEngineHost = pEngineHost;
}

CRTTIObject* CEditorAction::FindObjectByID(int32_t iId) const
{
    return g_pEngineHost != nullptr ? g_pEngineHost->FindObjectById(iId) : nullptr;
}

void CEditorAction::SetFlag(uint32_t uMask, bool bOn)
{
    m_Flags = bOn ? m_Flags | uMask : m_Flags & ~uMask;
}

void CEditorAction::SaveAttribs(fs::ifile& file)
{
    for (const CRTTI* pClass = GetRTTI(); pClass != nullptr; pClass = pClass->GetBase())
    {
        for (const CRTTIField* pField : pClass->GetFields())
        {
            SaveAttrib(file, pField);
        }
    }
}

void CEditorAction::SaveAttrib(fs::ifile& file, const CRTTIField* pField)
{
    file.printf("  attrib( \"%s\", \"%s\" )\n", pField->GetName(), pField->ToString(this).c_str());
}

void CEditorAction::LoadAttribs(const CTCPARSE_KEYWORD* pKeyword)
{
    const CTCPARSE_KEYWORD* pChild = pKeyword != nullptr ? pKeyword->block : nullptr;
    for (; pChild != nullptr; pChild = pChild->next)
    {
        LoadAttrib(pChild);
    }
}

void CEditorAction::LoadAttrib(const CTCPARSE_KEYWORD* pKeyword)
{
    const char* pszField = GetStringValue(pKeyword->params);
    if (!IsKeyword(pKeyword, "attrib") || pszField == nullptr)
    {
        return;
    }
    if (CRTTIField* pField = FindField(pszField))
    {
        pField->FromString(this, GetStringValue(pKeyword->params->next));
    }
}
