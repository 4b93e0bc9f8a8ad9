#include "editor/app/CLightDock.h"

#include "editor/app/CFormScroll.h"
#include "editor/core/Words.h"
#include "editor/view/SRenderSettings.h"

#include <QComboBox>
#include <QFormLayout>
#include <QSignalBlocker>
#include <QSlider>

#include <cmath>

namespace
{

constexpr int WHOLE_TURN = 360;
constexpr int UPRIGHT = 90;
constexpr int PERCENT = 100;

} // namespace

CLightDock::CLightDock(QWidget* pParent, SRenderSettings& settings, std::function<void()> onChange)
    : QDockWidget(Words("Light"), pParent)
    , m_Settings(settings)
    , m_OnChange(std::move(onChange))
    , m_pTimes(new QComboBox(this))
{
    setObjectName("light");
    auto* pGround = new QWidget(this);
    auto* pForm = new QFormLayout(pGround);
    pForm->setRowWrapPolicy(QFormLayout::WrapLongRows); // in a narrow dock
    AddTimes(*pForm);
    AddSlider(*pForm, Words("Sun direction"), WHOLE_TURN, 1.0F, settings.fSunYaw);
    AddSlider(*pForm, Words("Sun height"), UPRIGHT, 1.0F, settings.fSunPitch);
    AddSlider(*pForm, Words("Ambient light"), PERCENT, 0.01F, settings.fAmbient);
    AddSlider(*pForm, Words("Terrain types"), PERCENT, 0.01F, settings.fTypeBlend);
    setWidget(new CFormScroll(this, pGround));
    Follow();
}

void CLightDock::AddTimes(QFormLayout& form)
{
    for (const SDayTime& time : DAY_TIMES)
    {
        m_pTimes->addItem(Words(time.pszName));
    }
    m_pTimes->setPlaceholderText(Words("Another"));
    connect(m_pTimes,
            &QComboBox::activated,
            this,
            [this](int i)
            {
                m_Settings.SetTime(DAY_TIMES[i]);
                Follow();
                m_OnChange();
            });
    form.addRow(Words("Time of day"), m_pTimes);
}

void CLightDock::AddSlider(
    QFormLayout& form, const char* pszLabel, int iMost, float fUnit, float& fValue)
{
    auto* pSlider = new QSlider(Qt::Horizontal, this);
    pSlider->setRange(0, iMost);
    m_Rows.push_back({pSlider, &fValue, fUnit});
    connect(pSlider,
            &QSlider::valueChanged,
            this,
            [this, fUnit, &fValue](int iValue)
            {
                fValue = static_cast<float>(iValue) * fUnit;
                Follow();
                m_OnChange();
            });
    form.addRow(pszLabel, pSlider);
}

void CLightDock::Follow()
{
    for (const SRow& row : m_Rows)
    {
        // What lies between two steps of the slider stays as it is.
        const QSignalBlocker blocker(row.pSlider);
        row.pSlider->setValue(static_cast<int>(std::lround(*row.pValue / row.fUnit)));
    }
    m_pTimes->setCurrentIndex(m_Settings.FindTime());
}
