#pragma once

#include <QDockWidget>

#include <functional>

class QFormLayout;
struct SRenderSettings;

// Turns the sun and sets how much light is everywhere, at once in all views. Owned by the window.
class CLightDock : public QDockWidget
{
public:
    // settings: borrowed, changed in place; onChange runs after each change.
    CLightDock(QWidget* pParent, SRenderSettings& settings, std::function<void()> onChange);

private:
    void AddSlider(QFormLayout& form, const char* pszLabel, int iMost, float fUnit, float& fValue);

    std::function<void()> m_OnChange;
};
