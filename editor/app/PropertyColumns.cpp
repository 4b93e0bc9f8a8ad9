#include "editor/app/PropertyColumns.h"

#include "framework/core/CRegValue.h"
#include "host/PanelColumns.h"
#include "host/Reflection.h"

#include <QFontMetrics>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double MARGINS = 1.0;      // beside a name, both sides; in heights of a line
constexpr uint32_t VALUE_WIDTH = 80; // the list gives it what is left over anyway

// Of the fields that a list shows, in all classes of the process.
int GetLongestName(const QFontMetrics& metrics)
{
    int iLongest = 0;
    for (const CRTTI* pClass : CRTTI::GetClasses())
    {
        for (const CRTTIField* pField : pClass->GetFields())
        {
            const bool bShown = (pField->GetFlags() & (RTTI_FIELD_EDIT | RTTI_FIELD_READONLY)) != 0;
            iLongest =
                std::max(iLongest, bShown ? metrics.horizontalAdvance(pField->GetName()) : 0);
        }
    }
    return iLongest;
}

} // namespace

void FitPropertyColumns(const std::string& strRegistryRoot, const QFont& font)
{
    const std::string strPath = strRegistryRoot + PANEL_COLUMNS_KEY;
    const QFontMetrics metrics(font);
    CRegValue key;
    const int iLongest = GetLongestName(metrics);
    if (iLongest == 0 || key.Open(ERegHive::CurrentUser, strPath.c_str()) == 0)
    {
        return;
    }
    const auto iMargins = static_cast<int>(std::lround(metrics.height() * MARGINS));
    key.Create(ERegHive::CurrentUser, strPath.c_str());
    key.SetDWord(PANEL_COLUMN_NAME, static_cast<uint32_t>(iLongest + iMargins));
    key.SetDWord(PANEL_COLUMN_VALUE, VALUE_WIDTH);
}
