#include "parser/CTCParseLiterals.h"

#include "parser/TCParseCharacters.h"

#include <array>
#include <cstring>

// Takes decimal digits one by one as fValue * 10 + digit does in double precision. Up to
// EXACT_DIGITS digits every step of that is exact, so whole numbers give the same, faster.
namespace
{
class CDecimal
{
public:
    void Add(char cDigit)
    {
        const auto uDigit = static_cast<unsigned int>(cDigit - '0');
        if (m_nDigits < EXACT_DIGITS)
        {
            m_uExact = m_uExact * 10 + uDigit;
            ++m_nDigits;
            return;
        }
        // From here on every step rounds, just as the plain rule would have done.
        m_fRounded = GetValue() * 10.0 + uDigit;
        m_nDigits = EXACT_DIGITS + 1;
    }

    double GetValue() const
    {
        return m_nDigits <= EXACT_DIGITS ? static_cast<double>(m_uExact) : m_fRounded;
    }

private:
    static constexpr int EXACT_DIGITS = 15;

    uint64_t m_uExact = 0;
    double m_fRounded = 0.0;
    int m_nDigits = 0;
};
} // namespace

// 1.0 multiplied by 0.1 as often as the index says, which is not the nearest number to the power.
static constexpr auto FRACTION_SCALES = []
{
    std::array<double, 24> scales = {1.0};
    for (size_t i = 1; i < scales.size(); ++i)
    {
        scales[i] = scales[i - 1] * 0.1;
    }
    return scales;
}();

static double GetFractionScale(size_t nDigits)
{
    if (nDigits < FRACTION_SCALES.size())
    {
        return FRACTION_SCALES[nDigits];
    }
    // Goes on by the rule of the table. Once the scale is 0, further digits change nothing.
    double fScale = FRACTION_SCALES.back();
    for (size_t i = FRACTION_SCALES.size() - 1; i < nDigits && fScale != 0.0; ++i)
    {
        fScale *= 0.1;
    }
    return fScale;
}

static bool IsDigit(int nChar)
{
    return nChar >= '0' && nChar <= '9';
}

CTCParseLiterals::CTCParseLiterals(CTCParseReader& reader, ITCParseErrors& errors)
    : m_Reader(reader)
    , m_Errors(errors)
{
}

bool CTCParseLiterals::StartsNumber(int nChar)
{
    if (nChar == '-')
    {
        m_Reader.SkipSpace();
        return true;
    }
    m_Reader.UngetChar(nChar);
    return IsDigit(nChar);
}

bool CTCParseLiterals::ReadIntDigits(bool bNegative, int32_t* pValue, int32_t* pError)
{
    const char* pStart = m_Reader.GetCursor();
    const char* p = pStart;
    // Unsigned, because a number of too many digits wraps, which is defined for these only.
    uint32_t uValue = 0; // wraps
    for (; IsDigit(*p); ++p)
    {
        uValue = uValue * 10 + static_cast<uint32_t>(*p - '0');
    }
    m_Reader.SetCursor(p);
    *pValue = static_cast<int32_t>(bNegative ? 0U - uValue : uValue);
    return CheckNumber(pStart, "invalid termination of integer", pError);
}

bool CTCParseLiterals::CheckNumber(const char* pStart, const char* pszBadEnd, int32_t* pError)
{
    const char* pEnd = m_Reader.GetCursor();
    if (pEnd == pStart)
    {
        m_Errors.Fail(pError, "expected number");
        return false;
    }
    // Only a few characters may follow: "12abc" is refused instead of read as 12.
    if (!TCParseIs(*pEnd, TCPARSE_NUMBER_END))
    {
        m_Errors.Fail(pError, pszBadEnd);
        return false;
    }
    return true;
}

bool CTCParseLiterals::ReadFloatDigits(bool bNegative, float* pValue, int32_t* pError)
{
    const char* pStart = m_Reader.GetCursor();
    CDecimal decimal;
    const char* p = pStart;
    for (; IsDigit(*p); ++p)
    {
        decimal.Add(*p);
    }
    // The fraction's digits go on in the same number, which is scaled down once at the end.
    double fValue = decimal.GetValue();
    // A number may not begin with the point, but it may end with it.
    if (*p == '.' && p != pStart)
    {
        const char* pFraction = ++p;
        for (; IsDigit(*p); ++p)
        {
            decimal.Add(*p);
        }
        fValue = decimal.GetValue() * GetFractionScale(static_cast<size_t>(p - pFraction));
    }
    m_Reader.SetCursor(p);
    *pValue = static_cast<float>(bNegative ? -fValue : fValue);
    return CheckNumber(pStart, "invalid termination of float", pError);
}

// Most strings have no escape and are taken as they stand.
CTCPARSE_STRING* CTCParseLiterals::ReadQuoted(int32_t* pError)
{
    const char* pStart = m_Reader.GetCursor();
    const auto nRest = static_cast<size_t>(m_Reader.GetEnd() - pStart);
    const auto* pQuote = static_cast<const char*>(memchr(pStart, '"', nRest));
    const size_t nLength = pQuote != nullptr ? static_cast<size_t>(pQuote - pStart) : nRest;
    // A quote that was found may be an escaped one: then a backslash stands before it.
    if (memchr(pStart, '\\', nLength) != nullptr)
    {
        return ReadEscaped(pError);
    }
    if (pQuote == nullptr)
    {
        m_Reader.SetCursor(m_Reader.GetEnd());
        m_Errors.Fail(pError, "expected ending \"");
        return nullptr;
    }
    m_Reader.SetCursor(pQuote + 1);
    return new CTCPARSE_STRING(pStart, nLength);
}

CTCPARSE_STRING* CTCParseLiterals::ReadEscaped(int32_t* pError)
{
    if (m_Scratch == nullptr)
    {
        m_Scratch.reset(new char[m_Reader.GetText().size()]);
    }
    char* pDest = m_Scratch.get(); // no escape is longer decoded than written
    for (int nChar = m_Reader.GetChar(); nChar >= 0; nChar = m_Reader.GetChar())
    {
        if (nChar == '"')
        {
            const auto nLength = static_cast<size_t>(pDest - m_Scratch.get());
            return new CTCPARSE_STRING(m_Scratch.get(), nLength);
        }
        if (nChar == '\\')
        {
            nChar = m_Reader.GetChar();
            switch (nChar)
            {
            case 'n':
                // The escape stands for both bytes of a line break.
                *pDest++ = '\r';
                nChar = '\n';
                break;
            case 't':
                nChar = '\t';
                break;
            case '\r':
                // A continued line keeps one line break. A lone CR or LF stays what it is.
                nChar = *m_Reader.GetCursor() == '\n' ? m_Reader.GetChar() : nChar;
                break;
            default:
                break;
            }
        }
        *pDest++ = static_cast<char>(nChar);
    }
    m_Errors.Fail(pError, "expected ending \"");
    return nullptr;
}
