#include "parser/CTCParse.h"
#include "parser/TCParseCharacters.h"

#include <array>

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

// Whether a number follows at nChar, just read; then the digits are next, whatever blanks stand
// behind a sign. Otherwise a name is.
bool CTCParse::StartsNumber(int nChar)
{
    if (nChar == '-')
    {
        SkipSpace();
        return true;
    }
    UngetChar(nChar);
    return IsDigit(nChar);
}

CTCPARSE_INT* CTCParse::ReadInt(int32_t* pError)
{
    const int nChar = GetChar();
    int32_t nValue = 0;
    NameBuffer szName;
    if (nChar == '%')
    {
        if (!ReadVariable(m_Callbacks.pInt != nullptr, szName, pError))
        {
            return nullptr;
        }
        if (!m_Callbacks.pInt(&nValue, szName))
        {
            Error("int variable '%s' not found!\n", szName);
            *pError = 1;
            return nullptr;
        }
        auto* pValue = new CTCPARSE_INT(nValue);
        pValue->SetRefName(szName);
        return pValue;
    }
    if (StartsNumber(nChar))
    {
        return ReadIntDigits(nChar == '-', &nValue, pError) ? new CTCPARSE_INT(nValue) : nullptr;
    }
    if (const CTCPARSE_PARAM* pConst = ReadConst(tcparse_int, szName, pError))
    {
        return new CTCPARSE_INT(static_cast<const CTCPARSE_INT*>(pConst)->value);
    }
    return WarnUnknownConst(szName, *pError) ? new CTCPARSE_INT(0) : nullptr;
}

bool CTCParse::ReadIntDigits(bool bNegative, int32_t* pValue, int32_t* pError)
{
    const char* pStart = m_pCursor;
    uint32_t uValue = 0; // wraps
    while (IsDigit(*m_pCursor))
    {
        uValue = uValue * 10 + static_cast<uint32_t>(*m_pCursor++ - '0');
    }
    *pValue = static_cast<int32_t>(bNegative ? 0U - uValue : uValue);
    return CheckNumber(pStart, "invalid termination of integer", pError);
}

bool CTCParse::CheckNumber(const char* pStart, const char* pszBadEnd, int32_t* pError)
{
    if (m_pCursor == pStart)
    {
        Fail(pError, "expected number");
        return false;
    }
    if (!TCParseIs(*m_pCursor, TCPARSE_NUMBER_END))
    {
        Fail(pError, pszBadEnd);
        return false;
    }
    return true;
}

CTCPARSE_FLOAT* CTCParse::ReadFloat(int32_t* pError)
{
    const int nChar = GetChar();
    float fValue = 0.0F;
    NameBuffer szName;
    if (nChar == '%')
    {
        if (!ReadVariable(m_Callbacks.pFloat != nullptr, szName, pError))
        {
            return nullptr;
        }
        if (*m_pCursor == '.')
        {
            *pError = 1;
            return nullptr;
        }
        auto* pValue = new CTCPARSE_FLOAT(0.0F);
        if (m_Callbacks.pFloat(&pValue->value, szName, ""))
        {
            pValue->SetRefName(szName);
        }
        else
        {
            Error("float variable '%s' not found!\n", szName);
        }
        return pValue;
    }
    if (StartsNumber(nChar))
    {
        return ReadFloatDigits(nChar == '-', &fValue, pError) ? new CTCPARSE_FLOAT(fValue)
                                                              : nullptr;
    }
    if (const CTCPARSE_PARAM* pConst = ReadConst(tcparse_float, szName, pError))
    {
        return new CTCPARSE_FLOAT(static_cast<const CTCPARSE_FLOAT*>(pConst)->value);
    }
    return WarnUnknownConst(szName, *pError) ? new CTCPARSE_FLOAT(0.0F) : nullptr;
}

bool CTCParse::ReadFloatDigits(bool bNegative, float* pValue, int32_t* pError)
{
    const char* pStart = m_pCursor;
    CDecimal decimal;
    const char* p = pStart;
    for (; IsDigit(*p); ++p)
    {
        decimal.Add(*p);
    }
    double fValue = decimal.GetValue();
    if (*p == '.' && p != pStart)
    {
        const char* pFraction = ++p;
        for (; IsDigit(*p); ++p)
        {
            decimal.Add(*p);
        }
        fValue = decimal.GetValue() * GetFractionScale(static_cast<size_t>(p - pFraction));
    }
    m_pCursor = p;
    *pValue = static_cast<float>(bNegative ? -fValue : fValue);
    return CheckNumber(pStart, "invalid termination of float", pError);
}
