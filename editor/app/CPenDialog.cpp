#include "editor/app/CPenDialog.h"

#include "editor/core/Words.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSlider>
#include <QTabletEvent>

#include <optional>

namespace
{

constexpr int CURVE_STEPS = 20; // of the slider, to either side
constexpr int PICTURE_SIDE = 160;

// The power for each pressure, from left to right.
class CCurvePicture : public QWidget
{
public:
    CCurvePicture(QWidget* pParent, const SFormSettings& settings)
        : QWidget(pParent)
        , m_Settings(settings)
    {
        setObjectName("pen-curve");
        setAccessibleName(Words("Power for the pressure of the pen"));
        setToolTip(Words("Press with the pen here to try it"));
        setMinimumSize(PICTURE_SIDE, PICTURE_SIDE);
    }

protected:
    void paintEvent(QPaintEvent* /*pEvent*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), palette().base());
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        QPolygonF curve;
        for (int iX = 0; iX < width(); ++iX)
        {
            curve << GetPlace(static_cast<float>(iX) / static_cast<float>(width() - 1));
        }
        painter.setPen(QPen(palette().color(QPalette::Text), 2.0));
        painter.drawPolyline(curve);
        if (m_Pressure)
        {
            painter.setBrush(palette().highlight());
            painter.drawEllipse(GetPlace(*m_Pressure), 5.0, 5.0);
        }
    }

    void tabletEvent(QTabletEvent* pEvent) override
    {
        m_Pressure = static_cast<float>(pEvent->pressure());
        pEvent->accept();
        update();
    }

private:
    QPointF GetPlace(float fPressure) const
    {
        const auto fPower = static_cast<double>(m_Settings.GetPower(fPressure));
        return {static_cast<double>(fPressure) * (width() - 1), (1.0 - fPower) * (height() - 1)};
    }

    const SFormSettings& m_Settings;
    std::optional<float> m_Pressure;
};

// The words at the ends of its axes around it.
QLayout* MakeAxes(QWidget* pParent, QWidget* pPicture)
{
    auto* pGrid = new QGridLayout;
    pGrid->addWidget(new QLabel(Words("full power"), pParent), 0, 0, Qt::AlignRight | Qt::AlignTop);
    pGrid->addWidget(new QLabel(Words("none"), pParent), 1, 0, Qt::AlignRight | Qt::AlignBottom);
    pGrid->addWidget(pPicture, 0, 1, 2, 2);
    pGrid->addWidget(new QLabel(Words("light touch"), pParent), 2, 1, Qt::AlignLeft);
    pGrid->addWidget(new QLabel(Words("firm"), pParent), 2, 2, Qt::AlignRight);
    pGrid->setColumnStretch(1, 1);
    return pGrid;
}

QLayout* MakeEnds(QWidget* pParent, QWidget* pSlider)
{
    auto* pRow = new QHBoxLayout;
    pRow->addWidget(new QLabel(Words("strong"), pParent));
    pRow->addWidget(pSlider, 1);
    pRow->addWidget(new QLabel(Words("weak"), pParent));
    return pRow;
}

} // namespace

CPenDialog::CPenDialog(QWidget* pParent, SFormSettings& settings)
    : QDialog(pParent)
    , m_Settings(settings)
    , m_Shown(settings)
    , m_pUse(new QCheckBox(Words("The pressure of the pen scales the &power of the brush"), this))
    , m_pCurve(new QSlider(Qt::Horizontal, this))
{
    setWindowTitle(Words("Pen"));
    auto* pForm = new QFormLayout(this);
    pForm->addRow(m_pUse);
    auto* pPicture = new CCurvePicture(this, m_Shown);
    pForm->addRow(MakeAxes(this, pPicture));
    auto* pCurveName = new QLabel(Words("A &light touch is:"), this);
    pCurveName->setBuddy(m_pCurve);
    pForm->addRow(pCurveName, MakeEnds(this, m_pCurve));
    m_pUse->setChecked(settings.bPen);
    m_pCurve->setAccessibleName(Words("Curve of the pressure"));
    m_pCurve->setRange(-CURVE_STEPS, CURVE_STEPS);
    m_pCurve->setValue(
        static_cast<int>(settings.fPenCurve / SFormSettings::MOST_CURVE * CURVE_STEPS));
    connect(m_pUse,
            &QCheckBox::toggled,
            this,
            [this, pPicture](bool bOn)
            {
                m_Shown.bPen = bOn;
                m_pCurve->setEnabled(bOn);
                pPicture->update();
            });
    connect(m_pCurve,
            &QSlider::valueChanged,
            this,
            [this, pPicture](int iValue)
            {
                m_Shown.fPenCurve =
                    static_cast<float>(iValue) * SFormSettings::MOST_CURVE / CURVE_STEPS;
                pPicture->update();
            });
    m_pCurve->setEnabled(settings.bPen);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(pButtons, &QDialogButtonBox::accepted, this, &CPenDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &CPenDialog::reject);
    pForm->addRow(pButtons);
}

void CPenDialog::accept()
{
    m_Settings.bPen = m_Shown.bPen;
    m_Settings.fPenCurve = m_Shown.fPenCurve;
    QDialog::accept();
}
