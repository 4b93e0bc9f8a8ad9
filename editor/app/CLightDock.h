#pragma once

#include <QDockWidget>

#include <functional>
#include <vector>

class QComboBox;
class QFormLayout;
class QSlider;
struct SRenderSettings;

// Turns the sun and sets how much light is everywhere, at once in all views: by the time of day or
// by sliders. Owned by the window.
class CLightDock : public QDockWidget
{
public:
    // settings: borrowed, changed in place; onChange runs after each change.
    CLightDock(QWidget* pParent, SRenderSettings& settings, std::function<void()> onChange);

    void Follow(); // the light may have been changed elsewhere

private:
    struct SRow
    {
        QSlider* pSlider = nullptr; // the dock's
        float* pValue = nullptr;    // of the settings
        float fUnit = 1.0F;         // a step of the slider
    };

    void AddTimes(QFormLayout& form);
    void AddSlider(QFormLayout& form, const char* pszLabel, int iMost, float fUnit, float& fValue);

    SRenderSettings& m_Settings;
    std::function<void()> m_OnChange;
    QComboBox* m_pTimes; // the dock's
    std::vector<SRow> m_Rows;
};
