#include "editor/app/CStatisticsPage.h"

#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/GroundStatistics.h"

#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int PICTURE_HEIGHT = 90;
constexpr int BAR_WIDTH = 3;

QString GetNumber(double fValue, int nDecimals)
{
    return QString::number(fValue, 'f', nDecimals);
}

QString GetSlope(double fRiseOverRun)
{
    constexpr double HALF_CIRCLE = 180.0;
    return GetNumber(std::atan(fRiseOverRun) * HALF_CIRCLE / M_PI, 1) +
           QString::fromUtf8("\xC2\xB0");
}

// A bar that has any vertex at all has one pixel.
QPixmap MakeHistogram(const SGroundStatistics& found, const QWidget& widget)
{
    const size_t nMost = *std::max_element(found.bars.begin(), found.bars.end());
    QPixmap picture(QSize(static_cast<int>(HISTOGRAM_BARS) * BAR_WIDTH, PICTURE_HEIGHT) *
                    widget.devicePixelRatioF());
    picture.setDevicePixelRatio(widget.devicePixelRatioF());
    picture.fill(widget.palette().color(QPalette::Base));
    QPainter painter(&picture);
    for (size_t i = 0; i < HISTOGRAM_BARS; ++i)
    {
        const double fShare = static_cast<double>(found.bars[i]) / static_cast<double>(nMost);
        const int iHeight = static_cast<int>(std::ceil(fShare * PICTURE_HEIGHT));
        painter.fillRect(static_cast<int>(i) * BAR_WIDTH,
                         PICTURE_HEIGHT - iHeight,
                         BAR_WIDTH,
                         iHeight,
                         widget.palette().color(QPalette::Highlight));
    }
    return picture;
}

} // namespace

CStatisticsPage::CStatisticsPage(QWidget* pParent, const CTerrain& terrain)
    : QWidget(pParent)
    , m_Terrain(terrain)
    , m_pForm(new QFormLayout(this))
{
}

void CStatisticsPage::AddRow(const char* pszLabel, const char* pszName, const QString& strText)
{
    auto* pText = new QLabel(strText, this);
    pText->setObjectName(pszName);
    pText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pForm->addRow(pszLabel, pText);
}

void CStatisticsPage::showEvent(QShowEvent* pEvent)
{
    QWidget::showEvent(pEvent);
    if (m_pForm->rowCount() > 0)
    {
        return;
    }
    constexpr double PERCENT = 100.0;
    const SGroundStatistics found = MeasureStatistics(m_Terrain);
    const SHeightView view = m_Terrain.GetView();
    AddRow(Words("Vertices"),
           "statistics-vertices",
           QString("%1 x %2").arg(view.uSizeX).arg(view.uSizeZ));
    AddRow(Words("Spacing"),
           "statistics-spacing",
           GetNumber(view.fStepX, 2) + " x " + GetNumber(view.fStepZ, 2) + Words(" cm"));
    AddRow(Words("Heights"),
           "statistics-range",
           GetNumber(found.fLowest, 2) + Words(" to ") + GetNumber(found.fHighest, 2) +
               Words(" cm"));
    AddRow(Words("Mean slope"), "statistics-mean", GetSlope(found.dMeanSlope));
    AddRow(Words("Steepest"), "statistics-steepest", GetSlope(found.dSteepest));
    AddRow(Words("Cannot be edited"),
           "statistics-uneditable",
           GetNumber(PERCENT * static_cast<double>(found.nUneditable) /
                         static_cast<double>(found.nVertices),
                     2) +
               " %");
    auto* pPicture = new QLabel(this);
    pPicture->setObjectName("statistics-picture");
    pPicture->setFrameShape(QFrame::StyledPanel);
    pPicture->setPixmap(MakeHistogram(found, *this));
    pPicture->setToolTip(
        Words("How much ground lies at each height, from the lowest to the highest."));
    m_pForm->addRow(Words("Lowest to highest"), pPicture);
}
