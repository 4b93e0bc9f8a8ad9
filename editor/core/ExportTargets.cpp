#include "editor/core/ExportTargets.h"

#include "engine/elevation/ElevationFormats.h"
#include "host/FileSystem.h"
#include "host/Log.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

namespace
{

constexpr int32_t MOST_STEP = 4096; // samples or cells
constexpr double MOST_ZERO = 65534.0;

template <typename TValue> struct SNamed
{
    const char* pszName;
    TValue value;
};

constexpr SNamed<ESideRule> SIDES[] = {
    {"any", ESideRule::Any},
    {"power_of_two_plus_one", ESideRule::PowerOfTwoPlusOne},
    {"multiple", ESideRule::Multiple},
    {"multiple_plus_one", ESideRule::MultiplePlusOne},
};

constexpr SNamed<EHeightCodes> HEIGHTS[] = {
    {"maximum", EHeightCodes::Maximum},
    {"range", EHeightCodes::Range},
    {"unit", EHeightCodes::Unit},
};

constexpr SNamed<EByteOrder> ORDERS[] = {
    {"little", EByteOrder::Little},
    {"big", EByteOrder::Big},
};

constexpr SNamed<bool> FIRST_ROWS[] = {
    {"north", false},
    {"south", true},
};

constexpr SNamed<EExportNumber> NUMBERS[] = {
    {"white", EExportNumber::White},
    {"count", EExportNumber::Count},
    {"base", EExportNumber::Base},
    {"zero", EExportNumber::Zero},
    {"width", EExportNumber::Width},
    {"depth", EExportNumber::Depth},
    {"spacing_x", EExportNumber::SpacingX},
    {"spacing_z", EExportNumber::SpacingZ},
    {"columns", EExportNumber::Columns},
    {"rows", EExportNumber::Rows},
    {"highest", EExportNumber::Highest},
};

std::string GetText(const CTCPARSE_PARAM* pParam)
{
    const char* pszText = GetStringValue(pParam);
    return pszText != nullptr ? pszText : "";
}

// A file declares its own keywords, so there may be fewer arguments.
const CTCPARSE_PARAM* GetNext(const CTCPARSE_PARAM* pParam)
{
    return pParam != nullptr ? pParam->next : nullptr;
}

double GetNumber(const CTCPARSE_PARAM* pParam)
{
    return static_cast<double>(GetFloatValue(pParam));
}

// Reads one row; the first fault is kept, a phrase.
class CTargetReader
{
public:
    explicit CTargetReader(const CTCPARSE_KEYWORD& row) { m_Target.strName = GetText(row.params); }

    void Read(const CTCPARSE_KEYWORD& key);
    // What no single keyword can tell.
    void Check();

    SExportTarget& GetTarget() { return m_Target; }

    const std::string& GetFault() const { return m_Fault; }

private:
    template <typename TValue, size_t COUNT>
    void Take(const CTCPARSE_PARAM* pParam, const SNamed<TValue> (&names)[COUNT], TValue& value)
    {
        const std::string strName = GetText(pParam);
        for (const SNamed<TValue>& named : names)
        {
            if (strName == named.pszName)
            {
                value = named.value;
                return;
            }
        }
        Fail("\"" + strName + "\" is none of the words for it");
    }

    void ReadSide(const CTCPARSE_KEYWORD& key);
    void ReadNumber(const CTCPARSE_KEYWORD& key);

    void Fail(const std::string& strFault) { m_Fault = m_Fault.empty() ? strFault : m_Fault; }

    SExportTarget m_Target;
    std::string m_Fault;
};

void CTargetReader::Read(const CTCPARSE_KEYWORD& key)
{
    if (IsKeyword(&key, "use"))
    {
        m_Target.strUse = GetText(key.params);
    }
    else if (IsKeyword(&key, "file"))
    {
        m_Target.strExtension = GetText(key.params);
        m_Target.uBits = static_cast<uint32_t>(GetIntValue(GetNext(key.params)));
    }
    else if (IsKeyword(&key, "byte_order"))
    {
        Take(key.params, ORDERS, m_Target.eByteOrder);
    }
    else if (IsKeyword(&key, "first_row"))
    {
        Take(key.params, FIRST_ROWS, m_Target.bSouthFirst);
    }
    else if (IsKeyword(&key, "side"))
    {
        ReadSide(key);
    }
    else if (IsKeyword(&key, "square"))
    {
        m_Target.bSquare = true;
    }
    else if (IsKeyword(&key, "heights"))
    {
        Take(key.params, HEIGHTS, m_Target.eHeights);
        m_Target.dUnit = GetNumber(GetNext(key.params));
    }
    else if (IsKeyword(&key, "zero"))
    {
        m_Target.dZero = GetNumber(key.params);
    }
    else if (IsKeyword(&key, "metres"))
    {
        m_Target.bMetres = true;
    }
    else if (IsKeyword(&key, "number"))
    {
        ReadNumber(key);
    }
}

void CTargetReader::ReadSide(const CTCPARSE_KEYWORD& key)
{
    Take(key.params, SIDES, m_Target.eSide);
    const int32_t iStep = GetIntValue(GetNext(key.params));
    const bool bStep =
        m_Target.eSide == ESideRule::Multiple || m_Target.eSide == ESideRule::MultiplePlusOne;
    if (bStep && (iStep < 1 || iStep > MOST_STEP))
    {
        Fail("a side is a multiple of 1 to " + std::to_string(MOST_STEP));
    }
    m_Target.uSideStep = bStep ? static_cast<uint32_t>(iStep) : 1;
}

void CTargetReader::ReadNumber(const CTCPARSE_KEYWORD& key)
{
    STargetNumber number;
    number.strLabel = GetText(key.params);
    Take(GetNext(key.params), NUMBERS, number.eNumber);
    number.dFactor = GetNumber(GetNext(GetNext(key.params)));
    m_Target.numbers.push_back(number);
}

void CTargetReader::Check()
{
    const SElevationFormat* pFormat = FindFormatByName(("x." + m_Target.strExtension).c_str());
    if (m_Target.strName.empty())
    {
        Fail("has no name");
    }
    if (!IsWritten(pFormat) || pFormat->bTerrain || pFormat->bDegreeTile)
    {
        Fail("\"" + m_Target.strExtension + "\" is no format to export to");
        return;
    }
    const bool bFloat = pFormat->eSamples == ESampleType::Float;
    if (m_Target.uBits != (bFloat ? 32U : 16U) && !(pFormat->bHalves && m_Target.uBits == 16))
    {
        Fail("the format has no samples of " + std::to_string(m_Target.uBits) + " bits");
    }
    if (m_Target.bSouthFirst && pFormat->bNorthUp)
    {
        Fail("the first row of the format is north");
    }
    const bool bCodes = m_Target.eHeights != EHeightCodes::Unit;
    if (bCodes && !HoldsCodes(*pFormat, true))
    {
        Fail("the format has no white, give a unit");
    }
    if (!bCodes && !(std::isfinite(m_Target.dUnit) && m_Target.dUnit > 0.0))
    {
        Fail("a unit is above 0");
    }
    // Of floats from 0 to 1 the number of height 0 is below 1.
    const double dMost = bFloat && bCodes ? 0.99 : MOST_ZERO;
    if (!(m_Target.dZero >= 0.0 && m_Target.dZero <= dMost))
    {
        Fail("the number of height 0 does not fit the format");
    }
}

// Puts the rows of a file behind those that are there, or in their places. False when it cannot be
// read; the parser has logged an error in it.
bool AddTargets(const std::string& strFile, std::vector<SExportTarget>& targets)
{
    ETCParseStatus eStatus = tcparse_done;
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(
        TCParseFile(strFile.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    for (const CTCPARSE_KEYWORD* pRow = pTree.get(); pRow != nullptr; pRow = pRow->next)
    {
        if (!IsKeyword(pRow, "target"))
        {
            continue;
        }
        CTargetReader reader(*pRow);
        for (const CTCPARSE_KEYWORD* pKey = pRow->block; pKey != nullptr; pKey = pKey->next)
        {
            reader.Read(*pKey);
        }
        reader.Check();
        SExportTarget& target = reader.GetTarget();
        if (!reader.GetFault().empty())
        {
            CrashLog("[ReadExportTargets] %s: \"%s\": %s\n",
                     strFile.c_str(),
                     target.strName.c_str(),
                     reader.GetFault().c_str());
            continue;
        }
        const auto found =
            std::find_if(targets.begin(),
                         targets.end(),
                         [&](const SExportTarget& old) { return old.strName == target.strName; });
        found != targets.end() ? * found = std::move(target)
                               : targets.emplace_back(std::move(target));
    }
    return eStatus == tcparse_done;
}

} // namespace

std::vector<SExportTarget> ReadExportTargets(const std::string& strReadyFile,
                                             const std::string& strOwnFile)
{
    std::vector<SExportTarget> targets;
    for (const std::string& strFile : {strReadyFile, strOwnFile})
    {
        const bool bThere = strFile != strOwnFile || fs::exists(strFile.c_str());
        if (bThere && !AddTargets(strFile, targets))
        {
            CrashLog("[ReadExportTargets] %s: cannot be read, its export targets are missing\n",
                     strFile.c_str());
        }
    }
    return targets;
}

const SExportTarget* FindExportTarget(const std::vector<SExportTarget>& targets,
                                      const std::string& strName)
{
    const auto found =
        std::find_if(targets.begin(),
                     targets.end(),
                     [&](const SExportTarget& target) { return target.strName == strName; });
    return found != targets.end() ? &*found : nullptr;
}
