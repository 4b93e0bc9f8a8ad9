#include "editor/app/ImportWords.h"

#include "editor/app/CImportSource.h"
#include "editor/core/Words.h"
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
        return Words("the file says none");
    }
    return QString("%1 x %2%3")
        .arg(Number(info.dSpacingX),
             Number(info.dSpacingZ),
             info.bInDegrees ? Words(" degrees") : "");
}

QString GetPlaceWords(const SGeoTags& geo)
{
    return geo.bKnown ? QString::fromStdString(GetPlaceText(geo.first) + Words(" to ") +
                                               GetPlaceText(geo.GetLast()))
                      : QString(Words("the file says none"));
}

QString GetVoidText(const SImportReport& report)
{
    return report.nVoids == 0
               ? QString(Words("none"))
               : QString(Words("%1, filled from their neighbours")).arg(report.nVoids);
}

// What the smallest difference of the file is, or 1.0 of one that has none.
QString GetStepText(const CImportSource& source, const SImportPlan& plan)
{
    const bool bMetres = source.GetReport().pFormat->bDegreeTile; // the format says what it counts
    return (bMetres ? "1 m: " : "") + Number(plan.dScale) +
           (plan.dScale == 1.0 ? Words(" unit of height") : Words(" units of height"));
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
        {"samples",
         Words("Samples"),
         QString(Words("%1 columns x %2 rows")).arg(info.uColumns).arg(info.uRows)},
        {"numbers", Words("Numbers"), QString("%1, %2").arg(report.pFormat->pszName, strType)},
        {"range",
         Words("Range"),
         QString(Words("%1 to %2"))
             .arg(Number(static_cast<double>(report.fLow)),
                  Number(static_cast<double>(report.fHigh)))},
        {"voids", Words("Voids"), GetVoidText(report)},
        {"spacing", Words("Spacing"), GetSpacingText(info)},
        {"place", Words("Place"), GetPlaceWords(info.geo)},
        {"system",
         Words("Coordinates"),
         strSystem.isEmpty() ? Words("the file says no system") : strSystem},
    };
    constexpr char TILES[] = "tiles: ";
    for (const std::string& strLine : report.lines)
    {
        if (strLine.starts_with(TILES))
        {
            words.prepend({"tiles",
                           Words("Tiles"),
                           QString::fromStdString(strLine.substr(sizeof(TILES) - 1))});
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
        strSamples += QString(Words("; %1 x %2 m at latitude %3"))
                          .arg(Rough(plan.dMetresX), Rough(plan.dMetresZ), Rough(plan.dLatitude));
    }
    return {
        {"size",
         Words("Size"),
         QString(Words("%1 x %2 vertices, %3 x %4 units"))
             .arg(w.uSizeX)
             .arg(w.uSizeZ)
             .arg(Rough(dX), Rough(dZ))},
        {"samples-apart", Words("Samples apart"), strSamples},
        {"vertices-apart",
         Words("Vertices apart"),
         QString("%1 x %2").arg(Rough(dX / (w.uSizeX - 1)), Rough(dZ / (w.uSizeZ - 1)))},
        {"step", bFloat ? Words("1.0 of the file") : Words("One step"), GetStepText(source, plan)},
        {"heights",
         Words("Heights"),
         QString(Words("%1 to %2, at most %3"))
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
        lines << Words("note: heights below 0 cannot be edited");
    }
    if (plan.fHigh > std::fabs(plan.size.y))
    {
        lines << Words("note: heights above the maximum height stay until they are edited");
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
        corners << QString(Words("x = %1, z = %2\n%3 of the file: %4"))
                       .arg(Rough(std::fabs(dX)),
                            Rough(std::fabs(dZ)),
                            Words(names[i]),
                            std::isnan(dHeight) ? Words("void") : Rough(dHeight));
    }
    return corners;
}
