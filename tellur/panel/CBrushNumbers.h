#pragma once

#include "tellur/panel/IPanelPlugin.h"

#include <optional>
#include <vector>

class CFormWindow;
class CTellurBrush;
struct SNotification;

// The numbers of the current brush in the panel: its extent, power, fade distance, hardness and
// vertical distance, each a field with a slider and most with arrows, and the limits between which
// the extent's slider runs. An edit goes to the brush at once. Which number has which controls,
// steps and ends is a table of rows in the source. A member of the form whose controls it binds.
//
// What it is given shows in its sliders at once and in its fields when the form writes its
// controls. What is typed and does not count yet is marked in its field, and limits that are
// exchanged stand in a notice. Lengths are terrain units.
class CBrushNumbers
{
public:
    explicit CBrushNumbers(CFormWindow& form); // kept for as long as this lives
    ~CBrushNumbers();
    CBrushNumbers(const CBrushNumbers&) = delete;
    CBrushNumbers& operator=(const CBrushNumbers&) = delete;

    // Gives the arrows their ranges and their fields. The controls have to be there.
    void SetupSpins();
    // Takes the limits that were stored last; if none ever were, those that suit the terrain.
    void TakeLimits(const SExtentLimits& stored);

    // The limits as they were when the form read its controls last.
    const SExtentLimits& GetLimits() const { return m_Limits; }

    // Shows the numbers of a brush; without one (null) all are 0.
    void Show(const CTellurBrush* pBrush);
    void ShowExtent(const CTellurBrush* pBrush); // its extent alone, also in the field
    void Enable(bool bOn);

private:
    struct SNumber;

    int GetPosition(const SNumber& number) const;
    void ShowPosition(SNumber& number);
    void TellLimits() const;
    static void Mark(SNumber& number);
    void OnScroll(SNumber& number, const SNotification& notification);
    void OnSpin(SNumber& number, int iDelta);
    void OnTyped(SNumber& number);
    void OnExtentTyped();
    void OnLimitTyped();

    CFormWindow& m_Form;
    SExtentLimits m_Limits;
    std::optional<float> m_KeptExtent; // what the slider shows while the limits are being typed
    std::vector<SNumber> m_Numbers;    // in the order of the rows; never resized
};
