#include "editor/app/ImportWords.h"

#include "editor/app/CImportSource.h"
#include "engine/elevation/MapSystem.h"
#include "engine/elevation/ReportText.h"

#include <cmath>

namespace
{

QString Number(double dValue)
{
    return QString::fromStdString(MakeNumber(dValue));
}

// To a tenth, for what a person compares at a glance.
QString Rough(double dValue)
{
    return Number(std::round(dValue * 10.0) / 10.0);
}

QString GetSpacingText(const SSampleInfo& info)
{
    if (info.dSpacingX <= 0.0 || info.dSpacingZ <= 0.0)
    {
        return "the file says none";
    }
    return QString("%1 x %2%3")
        .arg(Number(info.dSpacingX), Number(info.dSpacingZ), info.bInDegrees ? " degrees" : "");
}

QString GetPlaceWords(const SGeoTags& geo)
{
    return geo.bKnown ? QString::fromStdString(GetPlaceText(geo.first) + " to " +
                                               GetPlaceText(geo.GetLast()))
                      : QString("the file says none");
}

QString GetVoidText(const SImportReport& report)
{
    return report.nVoids == 0 ? QString("none")
                              : QString("%1, filled from their neighbours").arg(report.nVoids);
}

// What the smallest difference of the file is, or 1.0 of one that has none.
QString GetStepText(const CImportSource& source, const SImportPlan& plan)
{
    const bool bMetres = source.GetReport().pFormat->bDegreeTile; // the format says what it counts
    return (bMetres ? "1 m: " : "") + Number(plan.dScale) +
           (plan.dScale == 1.0 ? " unit of height" : " units of height");
}

bool IsForPerson(const std::string& strLine)
{
    return strLine.starts_with("assumed: ") || strLine.starts_with("note: ") ||
           strLine.starts_with("warning: ");
}

} // namespace

QList<SImportWord> DescribeFile(const CImportSource& source)
{
    const SSampleInfo& info = source.GetInfo();
    const SImportReport& report = source.GetReport();
    const QString strType = QString::fromStdString(GetSampleTypeText(info));
    const QString strSystem = QString::fromStdString(GetSystemText(info.geo));
    QList<SImportWord> words = {
        {"samples", "Samples", QString("%1 columns x %2 rows").arg(info.uColumns).arg(info.uRows)},
        {"numbers", "Numbers", QString("%1, %2").arg(report.pFormat->pszName, strType)},
        {"range",
         "Range",
         QString("%1 to %2")
             .arg(Number(static_cast<double>(report.fLow)),
                  Number(static_cast<double>(report.fHigh)))},
        {"voids", "Voids", GetVoidText(report)},
        {"spacing", "Spacing", GetSpacingText(info)},
        {"place", "Place", GetPlaceWords(info.geo)},
        {"system", "Coordinates", strSystem.isEmpty() ? "the file says no system" : strSystem},
    };
    constexpr char TILES[] = "tiles: ";
    for (const std::string& strLine : report.lines)
    {
        if (strLine.starts_with(TILES))
        {
            words.prepend(
                {"tiles", "Tiles", QString::fromStdString(strLine.substr(sizeof(TILES) - 1))});
        }
    }
    return words;
}

QList<SImportWord> DescribeLevel(const CImportSource& source, const SImportPlan& plan)
{
    const SFitWindow& w = plan.window;
    const auto dX = static_cast<double>(plan.size.x);
    const auto dZ = static_cast<double>(plan.size.z);
    const bool bFloat = source.GetInfo().eType == ESampleType::Float;
    QString strSamples =
        QString("%1 x %2").arg(Rough(dX / (w.uColumns - 1)), Rough(dZ / (w.uRows - 1)));
    if (plan.dMetresX > 0.0)
    {
        strSamples += QString("; %1 x %2 m at latitude %3")
                          .arg(Rough(plan.dMetresX), Rough(plan.dMetresZ), Rough(plan.dLatitude));
    }
    return {
        {"size",
         "Size",
         QString("%1 x %2 vertices, %3 x %4 units")
             .arg(w.uSizeX)
             .arg(w.uSizeZ)
             .arg(Rough(dX), Rough(dZ))},
        {"samples-apart", "Samples apart", strSamples},
        {"vertices-apart",
         "Vertices apart",
         QString("%1 x %2").arg(Rough(dX / (w.uSizeX - 1)), Rough(dZ / (w.uSizeZ - 1)))},
        {"step", bFloat ? "1.0 of the file" : "One step", GetStepText(source, plan)},
        {"heights",
         "Heights",
         QString("%1 to %2, at most %3")
             .arg(Rough(static_cast<double>(plan.fLow)),
                  Rough(static_cast<double>(plan.fHigh)),
                  Number(static_cast<double>(plan.size.y)))},
    };
}

QStringList ListAssumptions(const CImportSource& source, const SImportPlan& plan)
{
    QStringList lines;
    for (const auto* pLines : {&source.GetReport().lines, &plan.lines})
    {
        for (const std::string& strLine : *pLines)
        {
            if (IsForPerson(strLine))
            {
                lines << QString::fromStdString(strLine);
            }
        }
    }
    if (plan.fLow < 0.0F)
    {
        lines << "note: heights below 0 cannot be edited";
    }
    if (plan.fHigh > std::fabs(plan.size.y))
    {
        lines << "note: heights above the maximum height stay until they are edited";
    }
    return lines;
}

QStringList DescribeCorners(const CImportSource& source,
                            const SOrientation& orientation,
                            const SImportPlan& plan)
{
    const SSampleInfo& info = source.GetInfo();
    const std::array<size_t, 4> samples = orientation.GetCorners(info.uColumns, info.uRows);
    const std::array<const char*, 4> names = orientation.GetCornerNames();
    QStringList corners;
    for (size_t i = 0; i < samples.size(); ++i)
    {
        const double dX = i % 2 == 1 ? static_cast<double>(plan.size.x) : 0.0;
        const double dZ = i / 2 == 1 ? static_cast<double>(plan.size.z) : 0.0;
        const double dHeight =
            (static_cast<double>(source.GetSample(samples[i])) - plan.dOffset) * plan.dScale;
        corners << QString("x = %1, z = %2\n%3 of the file: %4")
                       .arg(Rough(std::fabs(dX)),
                            Rough(std::fabs(dZ)),
                            names[i],
                            std::isnan(dHeight) ? "void" : Rough(dHeight));
    }
    return corners;
}
