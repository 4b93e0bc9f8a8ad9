#include "editor/app/CLightDock.h"

#include "editor/view/SRenderSettings.h"

#include <QFormLayout>
#include <QSlider>

#include <cmath>

namespace
{

constexpr int WHOLE_TURN = 360;
constexpr int UPRIGHT = 90;
constexpr int PERCENT = 100;

} // namespace

CLightDock::CLightDock(QWidget* pParent, SRenderSettings& settings, std::function<void()> onChange)
    : QDockWidget("Light", pParent)
    , m_OnChange(std::move(onChange))
{
    setObjectName("light");
    auto* pGround = new QWidget(this);
    auto* pForm = new QFormLayout(pGround);
    AddSlider(*pForm, "Sun direction", WHOLE_TURN, 1.0F, settings.fSunYaw);
    AddSlider(*pForm, "Sun height", UPRIGHT, 1.0F, settings.fSunPitch);
    AddSlider(*pForm, "Ambient light", PERCENT, 0.01F, settings.fAmbient);
    AddSlider(*pForm, "Terrain types", PERCENT, 0.01F, settings.fTypeBlend);
    setWidget(pGround);
}

void CLightDock::AddSlider(
    QFormLayout& form, const char* pszLabel, int iMost, float fUnit, float& fValue)
{
    auto* pSlider = new QSlider(Qt::Horizontal, this);
    pSlider->setRange(0, iMost);
    pSlider->setValue(static_cast<int>(std::lround(fValue / fUnit)));
    connect(pSlider,
            &QSlider::valueChanged,
            this,
            [this, fUnit, &fValue](int iValue)
            {
                fValue = static_cast<float>(iValue) * fUnit;
                m_OnChange();
            });
    form.addRow(pszLabel, pSlider);
}
