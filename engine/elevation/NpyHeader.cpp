#include "engine/elevation/NpyHeader.h"

#include <algorithm>
#include <charconv>

namespace
{

constexpr size_t MAX_DIMENSIONS = 32;

// Walks over the header's text; each Take says whether it found what it wants and went past it.
class CHeaderText
{
public:
    explicit CHeaderText(std::string_view strText)
        : m_Text(strText)
    {
    }

    bool Take(std::string_view strWanted)
    {
        SkipBlanks();
        if (m_Text.substr(0, strWanted.size()) != strWanted)
        {
            return false;
        }
        m_Text.remove_prefix(strWanted.size());
        return true;
    }

    bool TakeQuoted(std::string_view& strValue)
    {
        SkipBlanks();
        if (m_Text.empty() || (m_Text[0] != '\'' && m_Text[0] != '"'))
        {
            return false;
        }
        const size_t nEnd = m_Text.find(m_Text[0], 1);
        if (nEnd == std::string_view::npos)
        {
            return false;
        }
        strValue = m_Text.substr(1, nEnd - 1);
        m_Text.remove_prefix(nEnd + 1);
        return true;
    }

    bool TakeNumber(uint64_t& uValue)
    {
        SkipBlanks();
        const auto [pEnd, error] =
            std::from_chars(m_Text.data(), m_Text.data() + m_Text.size(), uValue);
        if (error != std::errc())
        {
            return false;
        }
        m_Text.remove_prefix(static_cast<size_t>(pEnd - m_Text.data()));
        return true;
    }

    bool IsAtEnd()
    {
        SkipBlanks();
        return m_Text.empty();
    }

private:
    void SkipBlanks()
    {
        m_Text.remove_prefix(std::min(m_Text.find_first_not_of(" \t\r\n"), m_Text.size()));
    }

    std::string_view m_Text;
};

bool ReadShape(CHeaderText& text, std::vector<uint64_t>& shape)
{
    if (!text.Take("("))
    {
        return false;
    }
    bool bMore = !text.Take(")");
    while (bMore)
    {
        uint64_t uSize = 0;
        if (shape.size() == MAX_DIMENSIONS || !text.TakeNumber(uSize))
        {
            return false;
        }
        shape.push_back(uSize);
        // A comma may stand before the bracket: a single number is written as (5,).
        const bool bComma = text.Take(",");
        const bool bEnd = text.Take(")");
        if (!bComma && !bEnd)
        {
            return false;
        }
        bMore = !bEnd;
    }
    return true;
}

// Bits of the keys that were read.
enum EKey : uint32_t
{
    KEY_NONE = 0,
    KEY_TYPE = 1,
    KEY_ORDER = 2,
    KEY_SHAPE = 4,
    KEY_ALL = 7,
};

// One "'key': value"; KEY_NONE when it is none of the three.
EKey ReadEntry(CHeaderText& text, SNpyHeader& header)
{
    std::string_view strKey;
    if (!text.TakeQuoted(strKey) || !text.Take(":"))
    {
        return KEY_NONE;
    }
    if (strKey == "descr")
    {
        std::string_view strType;
        const bool bRead = text.TakeQuoted(strType);
        header.strType = strType;
        return bRead ? KEY_TYPE : KEY_NONE;
    }
    if (strKey == "fortran_order")
    {
        header.bFortranOrder = text.Take("True");
        return header.bFortranOrder || text.Take("False") ? KEY_ORDER : KEY_NONE;
    }
    return strKey == "shape" && ReadShape(text, header.shape) ? KEY_SHAPE : KEY_NONE;
}

} // namespace

bool ParseNpyHeader(std::string_view strText, SNpyHeader& header)
{
    CHeaderText text(strText);
    if (!text.Take("{"))
    {
        return false;
    }
    // The keys come in any order, each once, and a comma may follow the last value.
    uint32_t uKeys = 0;
    while (!text.Take("}"))
    {
        const EKey eKey = ReadEntry(text, header);
        if (eKey == KEY_NONE || (uKeys & eKey) != 0)
        {
            return false;
        }
        uKeys |= eKey;
        if (!text.Take(","))
        {
            return text.Take("}") && text.IsAtEnd() && uKeys == KEY_ALL;
        }
    }
    return text.IsAtEnd() && uKeys == KEY_ALL;
}
