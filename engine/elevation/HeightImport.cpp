#include "engine/elevation/HeightImport.h"

#include "engine/elevation/Fit.h"
#include "engine/elevation/ReportText.h"
#include "engine/elevation/Resample.h"
#include "engine/elevation/VoidFiller.h"
#include "host/Log.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <new>
#include <utility>

namespace
{

constexpr float DEFAULT_MAX_HEIGHT = 1000.0F;

// One import on its way; each step returns false with the fault in m_Fault.
class CHeightImport
{
public:
    CHeightImport(const SImportOptions& options, SSampleGrid& grid, SImportReport& report)
        : m_Options(options)
        , m_Grid(grid)
        , m_Report(report)
        , m_HoldsCodes(HoldsCodes(*report.pFormat, options.dWhite > 0.0))
        , m_IsTerrain(report.pFormat->bTerrain)
    {
    }

    bool Run(SHeightField& field)
    {
        if (!CheckOptions())
        {
            return false;
        }
        // Voids go first: they have no place in the range of the samples, and a fit would spread
        // them.
        FillHoles();
        return ScaleSamples() &&
               ChooseFit(
                   m_Options, m_Grid.uColumns, m_Grid.uRows, m_Window, m_Report.lines, m_Fault) &&
               MakeHeights(field) && MakeSize(field);
    }

    const std::string& GetFault() const { return m_Fault; }

private:
    bool CheckOptions();
    void FillHoles();
    bool ScaleSamples();
    double ChooseScale(float fLow, float fHigh, double& dOffset);
    bool MakeHeights(SHeightField& field);
    bool MakeSize(SHeightField& field);
    float
    MakeLength(float fWhole, float fSpacing, double dFileSpacing, uint32_t uCells, char cAxis);
    void ReportTerrain(const SHeightField& field);

    void Report(std::string strLine) { m_Report.lines.push_back(std::move(strLine)); }

    bool Fail(std::string strFault)
    {
        m_Fault = std::move(strFault);
        return false;
    }

    const SImportOptions& m_Options;
    SSampleGrid& m_Grid;
    SImportReport& m_Report;
    bool m_HoldsCodes;
    bool m_IsTerrain; // scale, spacing and maximum height are the file's, nothing is assumed
    float m_MaxHeight = 0.0F;
    SFitWindow m_Window;
    std::string m_Fault;
};

bool CHeightImport::CheckOptions()
{
    if (m_Options.dWhite > 0.0 && m_Options.dUnit > 0.0)
    {
        return Fail("a height of white and a unit are given, only one can hold");
    }
    if (m_Options.uSize > 0 && !IsTerrainSizeValid(m_Options.uSize, m_Options.uSize))
    {
        return Fail(MakeText("no terrain has %u vertices a side", m_Options.uSize));
    }
    return m_HoldsCodes || m_Options.dWhite <= 0.0 ||
           Fail("holds heights, no codes: it has no white, give a unit");
}

void CHeightImport::FillHoles()
{
    if (m_Report.nVoids > 0)
    {
        FillVoids(m_Grid);
        Report(MakeText("voids: %zu samples filled from their neighbours", m_Report.nVoids));
    }
}

// A height is (sample - dOffset) times what this gives.
double CHeightImport::ChooseScale(float fLow, float fHigh, double& dOffset)
{
    const char* pszStep = m_Grid.eType == ESampleType::Float ? "1.0" : "one step";
    double dScale = m_Options.dUnit > 0.0 ? m_Options.dUnit : 1.0;
    // What is given counts first. Codes without it are spread from 0 to the maximum height, and
    // heights are taken as they are.
    if (m_Options.dWhite > 0.0)
    {
        const double dFull =
            m_Grid.eType == ESampleType::Float ? 1.0 : std::exp2(m_Grid.uBits) - 1.0;
        dScale = m_Options.dWhite / dFull;
    }
    else if (m_HoldsCodes && m_Options.dUnit <= 0.0)
    {
        const double dRange = static_cast<double>(fHigh) - static_cast<double>(fLow);
        dOffset = static_cast<double>(fLow);
        dScale = dRange > 0.0 ? static_cast<double>(m_MaxHeight) / dRange : 1.0;
        Report("assumed: the lowest sample " + MakeNumber(static_cast<double>(fLow)) +
               " is height 0, the highest " + MakeNumber(static_cast<double>(fHigh)) +
               " is the maximum height");
    }
    else if (m_Options.dUnit <= 0.0 && m_IsTerrain)
    {
        return dScale;
    }
    else if (m_Options.dUnit <= 0.0)
    {
        Report("assumed: one unit of the file is one terrain unit");
    }
    Report(std::string("scale: ") + pszStep + " of the file is " + MakeNumber(dScale) +
           " in terrain units");
    return dScale;
}

bool CHeightImport::ScaleSamples()
{
    const auto [pLow, pHigh] = std::minmax_element(m_Grid.samples.begin(), m_Grid.samples.end());
    const float fLow = *pLow;
    const float fHigh = *pHigh;
    m_MaxHeight = m_Options.fMaxHeight > 0.0F ? m_Options.fMaxHeight : DEFAULT_MAX_HEIGHT;
    double dOffset = 0.0;
    const double dScale = ChooseScale(fLow, fHigh, dOffset);
    const auto getHeight = [=](float fSample)
    {
        return static_cast<float>((static_cast<double>(fSample) - dOffset) * dScale);
    };
    // The scale is linear, so the two ends speak for all samples between them.
    if (!std::isfinite(getHeight(fLow)) || !std::isfinite(getHeight(fHigh)))
    {
        return Fail("in terrain units its heights are too large");
    }
    // Samples that are heights already keep every bit.
    if (dScale != 1.0 || dOffset != 0.0)
    {
        std::transform(
            m_Grid.samples.begin(), m_Grid.samples.end(), m_Grid.samples.begin(), getHeight);
    }
    // Scaled by their range, the samples end at the maximum height that was chosen above. Otherwise
    // it follows from what is given or from the heights themselves.
    const bool bByRange = m_HoldsCodes && m_Options.dWhite <= 0.0 && m_Options.dUnit <= 0.0;
    if (m_Options.fMaxHeight <= 0.0F && !bByRange)
    {
        const double dOwn = std::fabs(static_cast<double>(m_Report.size.y)) * dScale;
        const double dGiven = m_Options.dWhite > 0.0 ? m_Options.dWhite : dOwn;
        m_MaxHeight =
            dGiven > 0.0 ? static_cast<float>(dGiven) : GetDefaultMaxHeight(getHeight(fHigh));
    }
    return true;
}

bool CHeightImport::MakeHeights(SHeightField& field)
{
    const SFitWindow& w = m_Window;
    if (!field.Allocate(w.uSizeX, w.uSizeZ))
    {
        return Fail(MakeText("not enough memory for %u x %u vertices", w.uSizeX, w.uSizeZ));
    }
    const SSampleView view{m_Grid.samples.data(), m_Grid.uColumns, m_Grid.uRows};
    // For a file that is kept as it is Resample finds as many vertices as samples and copies them.
    if (m_Options.eFit != EFit::Crop)
    {
        return Resample(view, w.uSizeX, w.uSizeZ, field.pHeights.get()) || Fail("cancelled");
    }
    CopyWindow(view, w.uColumn, w.uRow, w.uColumns, w.uRows, field.pHeights.get());
    return true;
}

float CHeightImport::MakeLength(
    float fWhole, float fSpacing, double dFileSpacing, uint32_t uCells, char cAxis)
{
    // What is said counts first, the whole length before the spacing; then comes the spacing of the
    // file, unless that is in degrees.
    if (fWhole > 0.0F)
    {
        return fWhole;
    }
    double dSpacing = static_cast<double>(fSpacing);
    if (dSpacing <= 0.0 && dFileSpacing > 0.0 && !m_Grid.bInDegrees)
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

bool CHeightImport::MakeSize(SHeightField& field)
{
    if (m_Grid.bInDegrees)
    {
        Report("note: the file's spacing of " + MakeNumber(m_Grid.dSpacingX) + " x " +
               MakeNumber(m_Grid.dSpacingZ) + " is in degrees and not used");
    }
    // Counted in the samples that are used: interpolation makes other vertices of the same length.
    field.size = {
        MakeLength(
            m_Options.fWidth, m_Options.fSpacingX, m_Grid.dSpacingX, m_Window.uColumns - 1, 'x'),
        m_MaxHeight,
        MakeLength(
            m_Options.fDepth, m_Options.fSpacingZ, m_Grid.dSpacingZ, m_Window.uRows - 1, 'z')};
    if (!IsSizeVectorValid(field.size))
    {
        return Fail("its width, depth or maximum height is too large or too small");
    }
    if (m_Options.fMaxHeight <= 0.0F && !m_IsTerrain)
    {
        Report("assumed: maximum height " + MakeNumber(static_cast<double>(m_MaxHeight)));
    }
    ReportTerrain(field);
    return true;
}

void CHeightImport::ReportTerrain(const SHeightField& field)
{
    const auto [pLow, pHigh] =
        std::minmax_element(field.pHeights.get(), field.pHeights.get() + field.GetCount());
    const double dSizeX = static_cast<double>(field.size.x);
    const double dSizeZ = static_cast<double>(field.size.z);
    Report(MakeText("terrain: %u x %u vertices", field.uSizeX, field.uSizeZ));
    Report("size: " + MakeNumber(dSizeX) + " x " + MakeNumber(dSizeZ) + ", maximum height " +
           MakeNumber(static_cast<double>(field.size.y)));
    Report("range: " + MakeNumber(static_cast<double>(*pLow)) + " to " +
           MakeNumber(static_cast<double>(*pHigh)));
    Report("step: " + MakeNumber(dSizeX / (field.uSizeX - 1)) + " x " +
           MakeNumber(dSizeZ / (field.uSizeZ - 1)));
    if (*pLow < 0.0F)
    {
        Report("note: heights below 0 cannot be edited");
    }
    if (*pHigh > field.size.y)
    {
        Report("note: heights above the maximum height stay until they are edited");
    }
}

} // namespace

float GetDefaultMaxHeight(float fHighest)
{
    if (!(fHighest > 0.0F))
    {
        return DEFAULT_MAX_HEIGHT;
    }
    double dUnit = 1.0;
    while (5.0 * dUnit <= fHighest)
    {
        dUnit *= 10.0;
    }
    double dMaxHeight = 5.0 * dUnit;
    dMaxHeight = 2.0 * dUnit > fHighest ? 2.0 * dUnit : dMaxHeight;
    dMaxHeight = dUnit > fHighest ? dUnit : dMaxHeight;
    return static_cast<float>(std::min<double>(dMaxHeight, FLT_MAX));
}

bool ImportHeights(const char* pszPath,
                   const SImportOptions& options,
                   SHeightField& field,
                   SImportReport& report)
{
    try
    {
        SSampleGrid grid;
        SImportReport made;
        if (!ReadElevation(pszPath, options, grid, made))
        {
            return false;
        }
        CHeightImport import(options, grid, made);
        SHeightField imported;
        if (import.Run(imported))
        {
            field = std::move(imported);
            report = std::move(made);
            return true;
        }
        CrashLog("[ImportHeights] %s: %s\n", pszPath, import.GetFault().c_str());
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[ImportHeights] %s: not enough memory\n", pszPath);
    }
    return false;
}
