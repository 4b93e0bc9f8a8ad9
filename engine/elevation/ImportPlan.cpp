#include "engine/elevation/ImportPlan.h"

#include "engine/elevation/DegreeLength.h"
#include "engine/elevation/ReportText.h"

#include <cmath>
#include <utility>

namespace
{

constexpr float DEFAULT_MAX_HEIGHT = 1000.0F;
constexpr double LAST_LATITUDE = 89.99; // a degree to the east is 20 metres there

// One plan on its way; each step returns false with the fault in m_Fault.
class CImportPlanner
{
public:
    CImportPlanner(const SSampleInfo& info,
                   const SImportReport& report,
                   const SImportOptions& options)
        : m_Info(info)
        , m_Report(report)
        , m_Options(options)
        , m_HoldsCodes(HoldsCodes(*report.pFormat, options.dWhite > 0.0))
        , m_IsTerrain(report.pFormat->bTerrain)
    {
    }

    bool Make()
    {
        return CheckOptions() && Orient() && ScaleSamples() &&
               ChooseFit(m_Options,
                         m_Info.uColumns,
                         m_Info.uRows,
                         m_Plan.window,
                         m_Plan.lines,
                         m_Fault) &&
               PlaceOnMap() && MakeSize();
    }

    SImportPlan& GetPlan() { return m_Plan; }

    std::string& GetFault() { return m_Fault; }

private:
    bool CheckOptions();
    bool Orient();
    bool ScaleSamples();
    void ChooseScale();
    bool PlaceOnMap();
    bool FindLatitude(double& dLatitude) const;
    void MeasureDegrees(const SDegreeLength& length);
    bool MakeSize();
    float
    MakeLength(float fWhole, float fSpacing, double dFileSpacing, uint32_t uCells, char cAxis);

    void Report(std::string strLine) { m_Plan.lines.push_back(std::move(strLine)); }

    bool Fail(std::string strFault)
    {
        m_Fault = std::move(strFault);
        return false;
    }

    SSampleInfo m_Info; // in the orientation that is asked for, once that is done
    const SImportReport& m_Report;
    const SImportOptions& m_Options;
    bool m_HoldsCodes;
    bool m_IsTerrain; // scale, spacing and maximum height are the file's, nothing is assumed
    float m_MaxHeight = 0.0F;
    SImportPlan m_Plan;
    std::string m_Fault;
};

bool CImportPlanner::CheckOptions()
{
    if (m_Options.dWhite > 0.0 && m_Options.dUnit > 0.0)
    {
        return Fail("a height of white and a unit are given, only one can hold");
    }
    if (m_Options.dBase != 0.0 &&
        (m_IsTerrain || (m_HoldsCodes && m_Options.dWhite <= 0.0 && m_Options.dUnit <= 0.0)))
    {
        return Fail(m_IsTerrain ? "a height file has its own heights"
                                : "a height of 0 needs that of white or of one unit");
    }
    if (m_Options.dWhite > 0.0 && m_Options.dWhite <= m_Options.dBase)
    {
        return Fail("white is not higher than 0 in the file");
    }
    if (m_Options.uSize > 0 && !IsTerrainSizeValid(m_Options.uSize, m_Options.uSize))
    {
        return Fail(MakeText("no terrain has %u vertices a side", m_Options.uSize));
    }
    return m_HoldsCodes || m_Options.dWhite <= 0.0 ||
           Fail("holds heights, no codes: it has no white, give a unit");
}

bool CImportPlanner::Orient()
{
    const SOrientation& orientation = m_Options.orientation;
    OrientInfo(orientation, m_Info);
    if (orientation.IsPlain())
    {
        Report(GetOrderLine(m_IsTerrain));
    }
    else
    {
        constexpr const char* TURNS[] = {"",
                                         "turned by 90 degrees to the right",
                                         "turned by 180 degrees",
                                         "turned by 90 degrees to the left"};
        constexpr const char* FLIPS[] = {
            "", "mirrored along x", "mirrored along z", "mirrored along x and z"};
        const std::string strTurn = TURNS[static_cast<size_t>(orientation.eTurn)];
        const std::string strFlip = FLIPS[static_cast<size_t>(orientation.eFlip)];
        Report("orientation: " + strTurn + (strTurn.empty() || strFlip.empty() ? "" : ", then ") +
               strFlip + ": the file's " + orientation.GetCornerNames()[0] + " is at x = 0, z = 0");
    }
    if (m_Report.nVoids > 0)
    {
        Report(MakeText("voids: %zu samples filled from their neighbours", m_Report.nVoids));
    }
    return true;
}

void CImportPlanner::ChooseScale()
{
    const char* pszStep = m_Info.eType == ESampleType::Float ? "1.0" : "one step";
    double& dScale = m_Plan.dScale;
    dScale = m_Options.dUnit > 0.0 ? m_Options.dUnit : 1.0;
    // What is given counts first. Codes without it are spread from 0 to the maximum height, and
    // heights are taken as they are.
    if (m_Options.dWhite > 0.0)
    {
        const double dFull =
            m_Info.eType == ESampleType::Float ? 1.0 : std::exp2(m_Info.uBits) - 1.0;
        dScale = (m_Options.dWhite - m_Options.dBase) / dFull;
    }
    else if (m_HoldsCodes && m_Options.dUnit <= 0.0)
    {
        const auto dLow = static_cast<double>(m_Report.fLow);
        const auto dHigh = static_cast<double>(m_Report.fHigh);
        m_Plan.dOffset = dLow;
        dScale = dHigh > dLow ? static_cast<double>(m_MaxHeight) / (dHigh - dLow) : 1.0;
        Report("assumed: the lowest sample " + MakeNumber(dLow) + " is height 0, the highest " +
               MakeNumber(dHigh) + " is the maximum height");
    }
    else if (m_Options.dUnit <= 0.0 && m_IsTerrain)
    {
        return;
    }
    else if (m_Options.dUnit <= 0.0)
    {
        Report("assumed: one unit of the file is one terrain unit");
    }
    Report(std::string("scale: ") + pszStep + " of the file is " + MakeNumber(dScale) +
           " in terrain units");
    if (m_Options.dBase != 0.0)
    {
        m_Plan.dOffset = -m_Options.dBase / dScale;
        Report("base: 0 in the file is height " + MakeNumber(m_Options.dBase));
    }
}

bool CImportPlanner::ScaleSamples()
{
    m_MaxHeight = m_Options.fMaxHeight > 0.0F ? m_Options.fMaxHeight : DEFAULT_MAX_HEIGHT;
    ChooseScale();
    const auto getHeight = [this](float fSample)
    {
        return static_cast<float>((static_cast<double>(fSample) - m_Plan.dOffset) * m_Plan.dScale);
    };
    m_Plan.fLow = getHeight(m_Report.fLow);
    m_Plan.fHigh = getHeight(m_Report.fHigh);
    // The scale is linear, so the two ends speak for all samples between them.
    if (!std::isfinite(m_Plan.fLow) || !std::isfinite(m_Plan.fHigh))
    {
        return Fail("in terrain units its heights are too large");
    }
    // Scaled by their range, the samples end at the maximum height that was chosen above. Otherwise
    // it follows from what is given or from the heights themselves.
    const bool bByRange = m_HoldsCodes && m_Options.dWhite <= 0.0 && m_Options.dUnit <= 0.0;
    if (m_Options.fMaxHeight <= 0.0F && !bByRange)
    {
        const double dOwn = std::fabs(static_cast<double>(m_Report.size.y)) * m_Plan.dScale;
        const double dGiven = m_Options.dWhite > 0.0 ? m_Options.dWhite : dOwn;
        m_MaxHeight = dGiven > 0.0 ? static_cast<float>(dGiven) : GetDefaultMaxHeight(m_Plan.fHigh);
    }
    return true;
}

bool CImportPlanner::FindLatitude(double& dLatitude) const
{
    const SGeoTags& geo = m_Plan.geo;
    const bool bTagged = geo.bKnown && geo.bDegrees;
    dLatitude = m_Options.latitude.value_or(bTagged ? geo.GetMiddleY() : NAN);
    return IsLatitude(dLatitude);
}

void CImportPlanner::MeasureDegrees(const SDegreeLength& length)
{
    const SGeoTags& geo = m_Plan.geo;
    const bool bSideways = m_Options.orientation.IsSideways();
    m_Plan.dMetresX = m_Info.dSpacingX * (bSideways ? length.dNorth : length.dEast);
    m_Plan.dMetresZ = m_Info.dSpacingZ * (bSideways ? length.dEast : length.dNorth);
    if (geo.bKnown && geo.bDegrees)
    {
        // Rows need not run east in the file itself.
        const auto measure = [&](const SMapPoint& to, uint32_t uSamples)
        {
            return std::hypot((to.dX - geo.first.dX) * length.dEast,
                              (to.dY - geo.first.dY) * length.dNorth) /
                   (uSamples - 1);
        };
        m_Plan.dMetresX = measure(geo.lastX, m_Plan.window.uColumns);
        m_Plan.dMetresZ = measure(geo.lastZ, m_Plan.window.uRows);
    }
}

bool CImportPlanner::PlaceOnMap()
{
    const SFitWindow& w = m_Plan.window;
    const auto share = [](uint32_t uSample, uint32_t uSamples)
    {
        return static_cast<double>(uSample) / (uSamples - 1);
    };
    m_Plan.geo = m_Info.geo;
    m_Plan.geo.Crop(share(w.uColumn, m_Info.uColumns),
                    share(w.uColumn + w.uColumns - 1, m_Info.uColumns),
                    share(w.uRow, m_Info.uRows),
                    share(w.uRow + w.uRows - 1, m_Info.uRows));
    if (!m_Info.bInDegrees)
    {
        return true;
    }
    double dLatitude = 0.0;
    const std::string strDegrees =
        MakeNumber(m_Info.dSpacingX) + " x " + MakeNumber(m_Info.dSpacingZ);
    const bool bAllSaid = (m_Options.fWidth > 0.0F || m_Options.fSpacingX > 0.0F) &&
                          (m_Options.fDepth > 0.0F || m_Options.fSpacingZ > 0.0F);
    const bool bFound = FindLatitude(dLatitude);
    if (bFound && std::fabs(dLatitude) > LAST_LATITUDE)
    {
        Report("note: the file's spacing of " + strDegrees + " degrees has no length at a pole");
        return bAllSaid || Fail("a degree to the east has no length at latitude " +
                                MakeNumber(dLatitude) + ": give the spacing");
    }
    if (bFound)
    {
        m_Plan.dLatitude = dLatitude;
        MeasureDegrees(GetDegreeLength(dLatitude));
        Report("spacing: " + strDegrees + " degrees are " + MakeNumber(m_Plan.dMetresX) + " x " +
               MakeNumber(m_Plan.dMetresZ) + " metres at latitude " + MakeNumber(dLatitude));
        return true;
    }
    if (m_Options.eSpacing == ESpacing::Auto && !bAllSaid)
    {
        return Fail(std::string("its spacing is in degrees, and neither its tags nor its name say "
                                "a latitude") +
                    (m_Report.pFormat->bDegreeTile ? " (as N46E007 does)" : "") +
                    ": give the latitude or the spacing");
    }
    Report("note: the file's spacing of " + strDegrees + " is in degrees and not used");
    return true;
}

float CImportPlanner::MakeLength(
    float fWhole, float fSpacing, double dFileSpacing, uint32_t uCells, char cAxis)
{
    // What is said counts first, the whole length before the spacing; then comes the spacing of the
    // file, where that is a length.
    if (fWhole > 0.0F)
    {
        return fWhole;
    }
    double dSpacing = static_cast<double>(fSpacing);
    if (dSpacing <= 0.0 && dFileSpacing > 0.0)
    {
        // A unit that is given holds for lengths as it does for heights.
        dSpacing = dFileSpacing * (m_Options.dUnit > 0.0 ? m_Options.dUnit : 1.0);
        if (!m_IsTerrain)
        {
            Report(MakeText("assumed: the file's own spacing along %c, %s in terrain units",
                            cAxis,
                            MakeNumber(dSpacing).c_str()));
        }
    }
    if (dSpacing <= 0.0)
    {
        dSpacing = 1.0;
        Report(MakeText("assumed: one terrain unit between samples along %c", cAxis));
    }
    return static_cast<float>(dSpacing * uCells);
}

bool CImportPlanner::MakeSize()
{
    const double dSpacingX = m_Info.bInDegrees ? m_Plan.dMetresX : m_Info.dSpacingX;
    const double dSpacingZ = m_Info.bInDegrees ? m_Plan.dMetresZ : m_Info.dSpacingZ;
    const SFitWindow& w = m_Plan.window;
    // Counted in the samples that are used: interpolation makes other vertices of the same length.
    m_Plan.size = {
        MakeLength(m_Options.fWidth, m_Options.fSpacingX, dSpacingX, w.uColumns - 1, 'x'),
        m_MaxHeight,
        MakeLength(m_Options.fDepth, m_Options.fSpacingZ, dSpacingZ, w.uRows - 1, 'z')};
    if (!IsSizeVectorValid(m_Plan.size))
    {
        return Fail("its width, depth or maximum height is too large or too small");
    }
    if (m_Options.fMaxHeight <= 0.0F && !m_IsTerrain)
    {
        Report("assumed: maximum height " + MakeNumber(static_cast<double>(m_MaxHeight)));
    }
    return true;
}

} // namespace

std::string GetOrderLine(bool bTerrain)
{
    return std::string(bTerrain ? "order" : "assumed") +
           ": the first row is north (z = 0), the first column is west (x = 0)";
}

bool PlanImport(const SSampleInfo& info,
                const SImportReport& report,
                const SImportOptions& options,
                SImportPlan& plan,
                std::string& strFault)
{
    CImportPlanner planner(info, report, options);
    if (!planner.Make())
    {
        strFault = std::move(planner.GetFault());
        return false;
    }
    plan = std::move(planner.GetPlan());
    return true;
}
