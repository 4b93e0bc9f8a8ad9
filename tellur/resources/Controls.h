#pragma once

#include "framework/core/Resources.h"

// The controls that the dialogs are made of, so that the same thing is equally wide everywhere:
// widths are average characters of the dialog's font.

inline constexpr int SLIDER_WIDTH = 10; // at least; a slider takes what its row has left over
inline constexpr int NUMBER_WIDTH = 8;  // digits and a point: 29748.43
inline constexpr int SPIN_WIDTH = 3;
inline constexpr int BROWSE_WIDTH = 4;

constexpr SControlResource MakeLabel(const char* pszText)
{
    return {.pszText = pszText};
}

constexpr SControlResource MakeSlider(uint32_t uId)
{
    return {.uId = uId, .eKind = EControlKind::Slider, .iWidth = SLIDER_WIDTH, .iWeight = 1};
}

constexpr SControlResource MakeNumber(uint32_t uId)
{
    return {.uId = uId, .eKind = EControlKind::Edit, .iWidth = NUMBER_WIDTH};
}

// A number that shares the row with others.
constexpr SControlResource MakeWideNumber(uint32_t uId)
{
    return {.uId = uId, .eKind = EControlKind::Edit, .iWidth = NUMBER_WIDTH, .iWeight = 1};
}

// The keyboard stops at the edit and the slider beside it, not at the arrows as well.
constexpr SControlResource MakeSpin(uint32_t uId)
{
    return {
        .uId = uId, .eKind = EControlKind::Spin, .iWidth = SPIN_WIDTH, .uStyle = CONTROL_NO_TAB};
}

// Stands where the rows above and below have their spin, so that the edits are in line.
constexpr SControlResource MakeSpinGap()
{
    return {.eKind = EControlKind::Space, .iWidth = SPIN_WIDTH};
}

// Text such as a path; uStyle: CONTROL_READ_ONLY or 0.
constexpr SControlResource MakeText(uint32_t uId, uint32_t uStyle)
{
    return {.uId = uId,
            .eKind = EControlKind::Edit,
            .iWidth = SLIDER_WIDTH,
            .iWeight = 1,
            .uStyle = uStyle};
}

constexpr SControlResource MakeButton(uint32_t uId, const char* pszText)
{
    return {.uId = uId, .eKind = EControlKind::PushButton, .pszText = pszText};
}

// A button that shares the row's width with the others, or has it alone.
constexpr SControlResource MakeWideButton(uint32_t uId, const char* pszText)
{
    return {.uId = uId, .eKind = EControlKind::PushButton, .pszText = pszText, .iWeight = 1};
}

// Chooses the file that the text before it names.
constexpr SControlResource MakeBrowse(uint32_t uId)
{
    return {
        .uId = uId, .eKind = EControlKind::PushButton, .pszText = "...", .iWidth = BROWSE_WIDTH};
}

constexpr SControlResource MakeCheckBox(uint32_t uId, const char* pszText)
{
    return {.uId = uId, .eKind = EControlKind::CheckBox, .pszText = pszText};
}

// Stays down; shares the row's width with the others.
constexpr SControlResource MakePushCheck(uint32_t uId, const char* pszText)
{
    return {.uId = uId, .eKind = EControlKind::PushCheck, .pszText = pszText, .iWeight = 1};
}

// The picture of a brush, in a row of SHAPE_LINES.
inline constexpr int SHAPE_LINES = 3;

constexpr SControlResource MakeShape(uint32_t uId, const char* pszText)
{
    return {
        .uId = uId, .eKind = EControlKind::OwnerDraw, .pszText = pszText, .uStyle = CONTROL_SQUARE};
}
