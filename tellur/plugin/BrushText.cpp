#include "tellur/plugin/BrushText.h"

#include "host/FileSystem.h"
#include "host/NumberText.h"
#include "host/Reflection.h"
#include "parser/DeclarativeText.h"
#include "tellur/brushes/CTellurBrush.h"

#include <cmath>
#include <cstring>
#include <string_view>

namespace
{

constexpr const char* HEIGHT_FIELD = "m_Height";

// Brush files round their numbers; a replay needs every bit. The last call of a key counts.
void WriteExact(fs::ifile& file, const char* pszKey, float fValue)
{
    float fRounded = 0.0F;
    ParseNumber(FormatNumber(static_cast<double>(fValue), 5), fRounded);
    if (fRounded != fValue && std::isfinite(fValue))
    {
        file.printf("  %s( %s )\n", pszKey, MakeExactNumber(fValue).c_str());
    }
}

} // namespace

bool WriteBrush(fs::ifile& file, const CTellurBrush& brush, const char* pszKeyword)
{
    file.printf("%s()\n{\n", pszKeyword);
    if (!brush.Save(file, 2))
    {
        return false;
    }
    WriteExact(file, "power_modifier", brush.GetPowerModifier());
    WriteExact(file, "fade_factor", brush.GetFadeFactor());
    WriteExact(file, "hardness", brush.GetHardness());
    WriteExact(file, "extent", brush.GetExtent());
    WriteExact(file, "vertical_distance", brush.GetVerticalDistance());
    file.printf("  mask_enabled( %d )\n}\n\n", brush.IsMaskEnabled() ? 1 : 0);
    return true;
}

CRTTIField* FindHeightField(const CTellurBrush* pBrush)
{
    const CRTTIObject* pObject = pBrush != nullptr ? pBrush->GetRTTIObject() : nullptr;
    return pObject != nullptr ? pObject->FindField(HEIGHT_FIELD) : nullptr;
}

bool HasFunction(const CTellurBrush& brush, const char* pszClassName)
{
    const char* pszFunction = brush.GetRTTIObject() != nullptr ? brush.GetFunctionName() : nullptr;
    return pszFunction != nullptr && std::strcmp(pszFunction, pszClassName) == 0;
}

std::string MakeToolName(std::string strClassName)
{
    constexpr std::string_view SUFFIX = "Function";
    if (strClassName.ends_with(SUFFIX))
    {
        strClassName.resize(strClassName.size() - SUFFIX.size());
    }
    std::string strText;
    for (const char c : strClassName)
    {
        const bool bWord = c >= 'A' && c <= 'Z' && !strText.empty();
        strText += bWord ? " " : "";
        strText += bWord ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return strText;
}

std::string GetToolName(const CTellurBrush* pBrush)
{
    const bool bFunction = pBrush != nullptr && pBrush->GetRTTIObject() != nullptr;
    return bFunction ? MakeToolName(pBrush->GetFunctionName()) : "";
}
