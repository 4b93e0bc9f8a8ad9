#pragma once

#include "engine/elevation/DegreeLength.h"
#include "engine/elevation/SExportTarget.h"
#include "engine/elevation/SImportOptions.h"
#include "host/HostTypes.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <variant>

// A number that may be below 0.
struct SAnyNumber
{
    double* pNumber;
};

// One option of the converter: who knows it, and what its value goes to.
struct SOption
{
    const char* pszName;
    uint32_t uCommands;
    // What is filled: lengths and heights above 0, counts within their range, places from 0.
    std::variant<float*,
                 double*,
                 SAnyNumber,
                 std::string*,
                 uint32_t*,
                 std::optional<uint32_t>*,
                 std::optional<double>*,
                 std::optional<SVec3>*,
                 std::optional<ELevelUnit>*,
                 EByteOrder*,
                 EFit*,
                 ETurn*,
                 EFlip*,
                 ESpacing*>
        target;
    uint32_t uLowest = 0;
    uint32_t uHighest = 0;
};

template <typename TValue> bool ReadWhole(const char* pszText, TValue& value)
{
    const char* pEnd = pszText + std::strlen(pszText);
    const auto [pRead, error] = std::from_chars(pszText, pEnd, value);
    return error == std::errc() && pRead == pEnd;
}

template <typename TEnum>
bool ReadName(const char* pszText,
              TEnum& eValue,
              std::initializer_list<std::pair<const char*, TEnum>> names)
{
    for (const auto& [pszName, eNamed] : names)
    {
        if (std::strcmp(pszText, pszName) == 0)
        {
            eValue = eNamed;
            return true;
        }
    }
    return false;
}

// Reads the value of one option; each overload gives what it needs, empty when it was that.
class CValueReader
{
public:
    CValueReader(const SOption& option, const char* pszValue)
        : m_Option(option)
        , m_Value(pszValue)
    {
    }

    template <typename TNumber> std::string operator()(TNumber* pNumber) const
    {
        TNumber number = 0;
        if (!ReadWhole(m_Value, number) || !std::isfinite(number) || !(number > 0))
        {
            return "a number above 0";
        }
        *pNumber = number;
        return "";
    }

    std::string operator()(uint32_t* pCount) const
    {
        uint32_t uCount = 0;
        if (!ReadWhole(m_Value, uCount) || uCount < m_Option.uLowest || uCount > m_Option.uHighest)
        {
            return "a whole number from " + std::to_string(m_Option.uLowest) + " to " +
                   std::to_string(m_Option.uHighest);
        }
        *pCount = uCount;
        return "";
    }

    std::string operator()(SAnyNumber any) const
    {
        return ReadWhole(m_Value, *any.pNumber) && std::isfinite(*any.pNumber) ? "" : "a number";
    }

    std::string operator()(std::string* pText) const
    {
        *pText = m_Value;
        return "";
    }

    std::string operator()(std::optional<uint32_t>* pPlace) const
    {
        return (*this)(&pPlace->emplace());
    }

    std::string operator()(std::optional<double>* pLatitude) const
    {
        return ReadWhole(m_Value, pLatitude->emplace()) && IsLatitude(**pLatitude)
                   ? ""
                   : "degrees from -90 to 90";
    }

    std::string operator()(std::optional<SVec3>* pPoint) const
    {
        constexpr float MOST = 1e9F; // squares of it are still numbers
        SVec3& point = pPoint->emplace();
        std::istringstream parts(m_Value);
        std::string strPart;
        for (float* pNumber : {&point.x, &point.y, &point.z})
        {
            if (!std::getline(parts, strPart, ',') || !ReadWhole(strPart.c_str(), *pNumber) ||
                !(std::fabs(*pNumber) <= MOST))
            {
                return "three numbers X,Y,Z";
            }
        }
        return std::getline(parts, strPart) ? "three numbers X,Y,Z" : "";
    }

    std::string operator()(EByteOrder* pOrder) const
    {
        return Choose(
            pOrder, {{"little", EByteOrder::Little}, {"big", EByteOrder::Big}}, "little or big");
    }

    std::string operator()(EFit* pFit) const
    {
        return Choose(
            pFit, {{"resample", EFit::Resample}, {"crop", EFit::Crop}}, "resample or crop");
    }

    std::string operator()(ETurn* pTurn) const
    {
        return Choose(pTurn,
                      {{"90", ETurn::Right}, {"180", ETurn::Half}, {"270", ETurn::Left}},
                      "90, 180 or 270");
    }

    std::string operator()(EFlip* pFlip) const
    {
        return Choose(pFlip, {{"x", EFlip::X}, {"z", EFlip::Z}, {"xz", EFlip::Both}}, "x, z or xz");
    }

    std::string operator()(std::optional<ELevelUnit>* pUnit) const
    {
        return Choose(&pUnit->emplace(),
                      {{"cm", ELevelUnit::Centimetre}, {"m", ELevelUnit::Metre}},
                      "cm or m");
    }

    std::string operator()(ESpacing* pSpacing) const
    {
        return Choose(pSpacing, {{"auto", ESpacing::Auto}}, "auto");
    }

private:
    template <typename TEnum>
    std::string Choose(TEnum* pValue,
                       std::initializer_list<std::pair<const char*, TEnum>> names,
                       const char* pszNeed) const
    {
        return ReadName(m_Value, *pValue, names) ? "" : pszNeed;
    }

    const SOption& m_Option;
    const char* m_Value;
};
