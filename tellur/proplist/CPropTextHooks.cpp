#include "tellur/proplist/CPropTextHooks.h"

#include "host/NumberText.h"
#include "host/Reflection.h"
#include "tellur/proplist/PropText.h"
#include "tellur/proplist/SPropRow.h"

#include <cmath>

std::string CPropTextHooks::ParseText(const SPropRow& row, const std::string& strTyped) const
{
    return m_Hooks.parse ? m_Hooks.parse(*row.pField, strTyped) : PutPoints(*row.pField, strTyped);
}

std::string CPropTextHooks::FormatText(const SPropRow& row, const std::string& strText) const
{
    return m_Hooks.format ? m_Hooks.format(*row.pField, strText) : strText;
}

std::string CPropTextHooks::FormatNumber(const SPropRow& row, double fValue) const
{
    if (m_Hooks.format)
    {
        return m_Hooks.format(*row.pField, ::FormatNumber(fValue, 6));
    }
    if (IsInteger(*row.pField))
    {
        return std::to_string(std::llround(fValue));
    }
    if (GetComponentCount(*row.pField) == 0 || row.iElement >= 0)
    {
        return {};
    }
    // All components of a vector move together.
    std::vector<std::string> words = SplitWords(row.strText);
    double fFirst = 0.0;
    const bool bFirst = !words.empty() && ParseNumber(words[0], fFirst);
    for (std::string& strWord : words)
    {
        double fWord = 0.0;
        ParseNumber(strWord, fWord);
        strWord =
            ::FormatNumber(fWord + (bFirst ? fValue - fFirst : 0.0), row.pField->GetPrecision());
    }
    return JoinWords(words);
}

bool CPropTextHooks::MayEdit(const SPropRow& row) const
{
    return !m_Hooks.mayEdit || m_Hooks.mayEdit(*row.pField);
}
