#pragma once

#include "host/Export.h"

#include <concepts>
#include <string>
#include <vector>

// Writes JSON text, one value after the other; commas come by themselves. What is begun is ended by
// End, and the end of the first one is the end of a line. Values inside an object follow a key
// each. Does not recurse: trees may be deep.
class TELLUR_API CJsonWriter
{
public:
    // Values of an array or an object that stands in one line.
    void BeginArray() { Begin('[', ']', false); }

    void BeginObject() { Begin('{', '}', false); }

    // An array with each value on a line of its own, nIndent blanks inside the line of the array.
    void BeginLines(size_t nIndent) { Begin('[', ']', true, nIndent); }

    void End();

    void WriteKey(const char* pszKey);

    // Bytes above 126 have the number of their character in Latin-1.
    void WriteText(const char* pszText);

    void WriteNumber(std::integral auto iValue) { Write(std::to_string(iValue)); }

    // With nine digits, so that it reads back to the same bits.
    void WriteNumber(float fValue);
    void WriteFixed(double fValue, int iDecimals);

    const std::string& GetText() const { return m_Text; }

private:
    struct SLevel
    {
        char cEnd = ']';
        bool bLines = false;
        size_t nIndent = 0; // blanks before its values
        bool bEmpty = true;
    };

    void Begin(char cBegin, char cEnd, bool bLines, size_t nIndent = 0);
    void BeginValue();
    void StartLine(size_t nIndent);
    void Write(const std::string& strValue);
    void WriteQuoted(const char* pszText);

    std::string m_Text;
    std::vector<SLevel> m_Levels; // that are open, the innermost last
    bool m_bHasKey = false;       // the next value belongs to it
};
