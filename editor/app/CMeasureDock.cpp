#include "editor/app/CMeasureDock.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/Words.h"
#include "editor/view/CGroundRuler.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr size_t MOST_PROFILE_SAMPLES = 2049;
constexpr float FLAT_RANGE = 0.05F; // less is rounding
constexpr int PROFILE_LINES = 6;    // of text, as high as the picture at least

// A number as short as it may be, with a point in every language as in the other fields.
QString Show(float fNumber, int iDecimals = 1)
{
    return QLocale::c().toString(static_cast<double>(fNumber), 'f', iDecimals).remove(',');
}

// The ground along the line, its lowest and highest place at the edges of the picture.
class CProfile : public QWidget
{
public:
    CProfile(QWidget* pParent, const std::vector<float>& heights)
        : QWidget(pParent)
        , m_Heights(heights)
    {
        setObjectName("measure-profile");
        setAccessibleName(Words("Profile along the line"));
        setMinimumHeight(fontMetrics().height() * PROFILE_LINES);
    }

protected:
    void paintEvent(QPaintEvent* /*pEvent*/) override
    {
        if (m_Heights.size() < 2)
        {
            return;
        }
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const auto [pLow, pHigh] = std::minmax_element(m_Heights.begin(), m_Heights.end());
        const int iText = fontMetrics().height();
        const QRectF room = QRectF(rect()).adjusted(1, iText, -1, -iText);
        const auto fRange = static_cast<double>(std::max(*pHigh - *pLow, FLAT_RANGE));
        QPolygonF line;
        for (size_t i = 0; i < m_Heights.size(); ++i)
        {
            const double fAlong =
                static_cast<double>(i) / static_cast<double>(m_Heights.size() - 1);
            const double fUp = static_cast<double>(m_Heights[i] - *pLow) / fRange;
            line << QPointF(room.left() + fAlong * room.width(),
                            room.bottom() - fUp * room.height());
        }
        QPolygonF ground = line;
        ground << room.bottomRight() << room.bottomLeft();
        QColor fill = palette().color(QPalette::Highlight);
        fill.setAlphaF(0.35F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawPolygon(ground);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.drawPolyline(line);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignTop | Qt::AlignRight, Show(*pHigh));
        painter.drawText(rect(), Qt::AlignBottom | Qt::AlignRight, Show(*pLow));
    }

private:
    const std::vector<float>& m_Heights;
};

} // namespace

CMeasureDock::CMeasureDock(QWidget* pParent, CEditorHost& host, const CGroundRuler& ruler)
    : QDockWidget(Words("Measure"), pParent)
    , m_Host(host)
    , m_Ruler(ruler)
    , m_pLine(new QLabel(this))
    , m_pProfile(new CProfile(this, m_Heights))
    , m_pProbe(new QLabel(this))
{
    setObjectName("measure");
    m_pLine->setObjectName("measure-line");
    m_pProbe->setObjectName("measure-probe");
    auto* pMiddle = new QWidget(this);
    auto* pColumn = new QVBoxLayout(pMiddle);
    for (QLabel* pLabel : {m_pLine, m_pProbe})
    {
        pLabel->setTextFormat(Qt::PlainText);
        pLabel->setWordWrap(true);
        pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    pColumn->addWidget(m_pLine);
    pColumn->addWidget(m_pProfile);
    pColumn->addWidget(m_pProbe);
    pColumn->addStretch(1);
    setWidget(pMiddle);
}

QString
CMeasureDock::DescribeLine(const SVec3& from, const SVec3& to, const SLineMeasure& measure) const
{
    return QString(Words("From %1, %2 to %3, %4\n"
                         "Distance %5, along the ground %6\n"
                         "Height difference %7, up %8, down %9\n"))
               .arg(Show(from.x),
                    Show(from.z),
                    Show(to.x),
                    Show(to.z),
                    Show(measure.fDistance),
                    Show(measure.fGround),
                    Show(measure.fRise, 2),
                    Show(measure.fClimb, 2),
                    Show(measure.fDrop, 2)) +
           QString(Words("Slope %1 degrees, steepest %2"))
               .arg(Show(measure.fSlope), Show(measure.fSteepest));
}

void CMeasureDock::Follow()
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    if (!isVisible())
    {
        return;
    }
    m_Heights.clear();
    m_pLine->setText(Words("The ruler (Level > Measure) draws a line with the left button."));
    m_pProbe->clear();
    if (pTerrain != nullptr && m_Ruler.HasLine())
    {
        const SVec3 from = m_Ruler.GetFrom();
        const SVec3 to = m_Ruler.GetTo();
        m_pLine->setText(DescribeLine(
            from, to, MeasureLine(*pTerrain, from, to, MOST_PROFILE_SAMPLES, m_Heights)));
    }
    if (pTerrain != nullptr && m_Ruler.HasProbe())
    {
        const SVec3 at = m_Ruler.GetProbe();
        m_pProbe->setText(QString(Words("Probe at %1, %2: height %3, slope %4 degrees"))
                              .arg(Show(at.x),
                                   Show(at.z),
                                   Show(pTerrain->GetHeightAt(at.x, at.z), 2),
                                   Show(MeasureSlope(*pTerrain, at))));
    }
    m_pProfile->setVisible(!m_Heights.empty());
    m_pProfile->update();
}

void CMeasureDock::showEvent(QShowEvent* pEvent)
{
    Follow();
    QDockWidget::showEvent(pEvent);
}
