#include "tellur/functions/CTellurBaseFunction.h"

#include "framework/core/KeyState.h"
#include "host/FileSystem.h"
#include "host/Log.h"
#include "parser/KeywordValues.h"
#include "tellur/stroke/ETerrainFunctionMode.h"

#include <cmath>

namespace
{

constexpr float MIN_BAND = 0.0001F;

} // namespace

const CRTTI CTellurBaseFunction::s_RTTI(
    "CTellurBaseFunction", ENGINE_CLASS_FUNCTION, nullptr, nullptr, CRTTI::FLAG_ABSTRACT);

const CEnumInfo* GetTerrainFunctionModes()
{
    static const CEnumInfo s_Modes = []
    {
        CEnumInfo modes;
        modes.Add(mode_default, "mode_default", "default mode");
        modes.Add(mode_min, "mode_min", "min mode");
        modes.Add(mode_max, "mode_max", "max mode");
        return modes;
    }();
    return &s_Modes;
}

int32_t GetEffectiveMode(int32_t iStoredMode)
{
    int32_t iMode = iStoredMode;
    if (IsKeyDown(EKey::Control))
    {
        iMode = mode_min;
    }
    if (IsKeyDown(EKey::Alt))
    {
        iMode = mode_max;
    }
    return iMode;
}

bool CVerticalBand::IsActive() const
{
    return std::fabs(m_Distance) >= MIN_BAND;
}

CTellurBaseFunction::CTellurBaseFunction(const SFunctionTraits& traits)
    : m_Traits(&traits)
    , m_Cursor(LoadCursorResource(traits.uCursorId))
{
}

bool CTellurBaseFunction::SetCursor()
{
    if (m_Cursor == nullptr)
    {
        CrashLog("[%s::SetCursor] %s\n", m_Traits->pszLogName, m_Traits->pszNoCursor);
        return false;
    }
    ::SetCursor(m_Cursor);
    return true;
}

bool CTellurBaseFunction::Save(fs::ifile& file, int iIndent) const
{
    if (GetClassName() == nullptr)
    {
        CrashLog("[%s::Save] %s\n", m_Traits->pszLogName, m_Traits->pszNoName);
        return false;
    }
    file.printf("%*sfunction( \"%s\" )\n%*s{\n", iIndent, "", GetClassName(), iIndent, "");
    for (const CRTTI* pClass = GetRTTI(); pClass != nullptr; pClass = pClass->GetBase())
    {
        for (const CRTTIField* pField : pClass->GetFields())
        {
            file.printf("%*sattrib( \"%s\", \"%s\" )\n",
                        iIndent + 2,
                        "",
                        pField->GetName(),
                        pField->ToString(this).c_str());
        }
    }
    file.printf("%*s}\n", iIndent, "");
    return true;
}

bool CTellurBaseFunction::Load(const CTCPARSE_KEYWORD* pBlock)
{
    for (const CTCPARSE_KEYWORD* pKey = pBlock; pKey != nullptr; pKey = pKey->next)
    {
        const char* pszField = GetStringValue(pKey->params);
        if (!IsKeyword(pKey, "attrib") || pszField == nullptr)
        {
            continue;
        }
        if (CRTTIField* pField = FindField(pszField))
        {
            pField->FromString(this, GetStringValue(pKey->params->next));
        }
    }
    return true;
}
