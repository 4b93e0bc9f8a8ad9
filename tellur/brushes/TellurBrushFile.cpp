// A brush in the predefined-brushes file: writing its block and reading it back.

#include "host/FileSystem.h"
#include "host/Log.h"
#include "parser/KeywordValues.h"
#include "tellur/brushes/CFunctionContainer.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/brushes/IFunctionSource.h"
#include "tellur/context/PluginContext.h"
#include "tellur/stroke/ITellurFunction.h"

#include <cmath>
#include <string>

namespace
{

const char* GetText(const char* pszText)
{
    return pszText != nullptr ? pszText : "";
}

// The name as a quoted string holds it, so that no name can end the string and with it the library.
std::string EscapeName(const char* pszName)
{
    std::string strEscaped;
    for (const char* p = GetText(pszName); *p != '\0'; ++p)
    {
        strEscaped += *p == '"' || *p == '\\' ? "\\" : "";
        strEscaped += *p;
    }
    return strEscaped;
}

void WriteNumber(fs::ifile& file, int iIndent, const char* pszKey, float fValue)
{
    // The text of what is no number would make the whole file unreadable.
    const float fWritten = std::isfinite(fValue) ? fValue : 0.0F;
    file.printf("%*s%s( %6.5f )\n", iIndent, "", pszKey, static_cast<double>(fWritten));
}

} // namespace

bool CTellurBrush::Save(fs::ifile& file, int iIndent) const
{
    if (m_Bitmap == nullptr)
    {
        CrashLog("[CTellurBrush::Save] no bitmap\n");
        return false;
    }
    if (m_Function == nullptr)
    {
        CrashLog("[CTellurBrush::Save] no function\n");
        return false;
    }
    // No blank before the closing parenthesis: files have always been written so.
    file.printf("%*sbrush_name( \"%s\")\n", iIndent, "", EscapeName(GetName()).c_str());
    file.printf("%*sbitmap()\n%*s{\n", iIndent, "", iIndent, "");
    if (!m_Bitmap->Save(file, iIndent + 2))
    {
        CrashLog("[CTellurBrush::Save] brush %s failed to save bitmap\n", GetText(GetName()));
        return false;
    }
    file.printf("%*s}\n", iIndent, "");
    if (!m_Function->Save(file, iIndent))
    {
        CrashLog("[CTellurBrush::Save] brush %s failed to save function\n", GetText(GetName()));
        return false;
    }
    WriteNumber(file, iIndent, "power_modifier", m_PowerModifier);
    // Kept as it always was: files have the density, and no editing step reads it.
    WriteNumber(file, iIndent, "usage_density", m_UsageDensity);
    WriteNumber(file, iIndent, "fade_factor", m_FadeFactor);
    WriteNumber(file, iIndent, "hardness", m_Hardness);
    WriteNumber(file, iIndent, "extent", m_Extent);
    WriteNumber(file, iIndent, "vertical_distance", m_VerticalDistance);
    if (!m_MaskPath.empty())
    {
        // Kept as it always was: the path is not escaped, so one with single backslashes does not
        // read back.
        file.printf("%*smask( \"%s\" )\n", iIndent, "", m_MaskPath.c_str());
    }
    return true;
}

bool CTellurBrush::LoadFunction(const CTCPARSE_KEYWORD* pKey)
{
    const char* pszName = GetStringValue(pKey->params);
    auto* pSource = GetPluginPart<IFunctionSource>();
    const ITellurFunction* pPrototype =
        pSource != nullptr ? pSource->GetFunctionContainer()->FindFunction(pszName) : nullptr;
    if (pPrototype == nullptr)
    {
        CrashLog("[CTellurBrush::Load] unrecognized function %s\n", GetText(pszName));
        return false;
    }
    std::unique_ptr<ITellurFunction> pFunction(pPrototype->Clone());
    if (pKey->block == nullptr || pFunction->Load(pKey->block))
    {
        SetFunction(pFunction.release());
    }
    return true;
}

bool CTellurBrush::LoadKey(const CTCPARSE_KEYWORD* pKey)
{
    struct SFloatKey
    {
        const char* pszName;
        void (CTellurBrush::*pSet)(float);
    };

    static constexpr SFloatKey KEYS[] = {
        {"power_modifier", &CTellurBrush::SetPowerModifier},
        {"usage_density", &CTellurBrush::SetUsageDensity},
        {"fade_factor", &CTellurBrush::SetFadeFactor},
        {"hardness", &CTellurBrush::SetHardness},
        {"extent", &CTellurBrush::SetExtent},
        {"vertical_distance", &CTellurBrush::SetVerticalDistance},
    };
    for (const SFloatKey& key : KEYS)
    {
        if (IsKeyword(pKey, key.pszName))
        {
            (this->*key.pSet)(GetFloatValue(pKey->params));
            return true;
        }
    }
    if (IsKeyword(pKey, "brush_name"))
    {
        SetName(GetStringValue(pKey->params));
    }
    else if (IsKeyword(pKey, "mask"))
    {
        SetMask(GetStringValue(pKey->params));
    }
    else if (IsKeyword(pKey, "bitmap"))
    {
        auto pBitmap = std::make_unique<CTellurBitmap>();
        if (pBitmap->LoadIni(pKey->block))
        {
            SetBitmap(pBitmap.release());
        }
    }
    else if (IsKeyword(pKey, "function"))
    {
        return LoadFunction(pKey);
    }
    return true;
}

bool CTellurBrush::Load(const CTCPARSE_KEYWORD* pBlock)
{
    if (pBlock == nullptr)
    {
        CrashLog("[CTellurBrush::Load] no key\n");
        return false;
    }
    for (const CTCPARSE_KEYWORD* pKey = pBlock; pKey != nullptr; pKey = pKey->next)
    {
        if (!LoadKey(pKey))
        {
            return false;
        }
    }
    return true;
}
