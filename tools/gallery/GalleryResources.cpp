#include "framework/widgets/CDialog.h"
#include "tools/gallery/GalleryIds.h"

namespace
{

constexpr SControlResource BUTTONS[] = {
    {.uId = GALLERY_PUSH, .eKind = EControlKind::PushButton, .pszText = "Push", .iWeight = 1},
    {.uId = GALLERY_CHECK, .eKind = EControlKind::CheckBox, .pszText = "Check"},
    {.uId = GALLERY_THREE, .eKind = EControlKind::ThreeState, .pszText = "Three states"},
    {.uId = GALLERY_TOGGLE, .eKind = EControlKind::PushCheck, .pszText = "Toggle", .iWeight = 1},
    {.uId = GALLERY_DRAWN, .eKind = EControlKind::OwnerDraw, .pszText = "Drawn", .iWidth = 9}};
constexpr SRowResource BUTTON_ROWS[] = {{BUTTONS, 2}};

constexpr SControlResource TEXTS[] = {
    {.pszText = "Text :"},
    {.uId = GALLERY_EDIT, .eKind = EControlKind::Edit, .iWidth = 12, .iWeight = 1},
    {.uId = GALLERY_READ_ONLY,
     .eKind = EControlKind::Edit,
     .pszText = "read only",
     .iWidth = 12,
     .iWeight = 1,
     .uStyle = CONTROL_READ_ONLY}};
constexpr SControlResource NUMBERS[] = {
    {.pszText = "Number :"},
    {.uId = GALLERY_SLIDER, .eKind = EControlKind::Slider, .iWidth = 16, .iWeight = 1},
    {.uId = GALLERY_NUMBER, .eKind = EControlKind::Edit, .iWidth = 7},
    {.uId = GALLERY_SPIN, .eKind = EControlKind::Spin, .uStyle = CONTROL_NO_TAB}};
constexpr SRowResource FIELD_ROWS[] = {{TEXTS}, {NUMBERS}};

constexpr SControlResource LISTS[] = {
    {.uId = GALLERY_LIST, .eKind = EControlKind::ListBox, .iWidth = 14, .iWeight = 1},
    {.uId = GALLERY_REPORT, .eKind = EControlKind::ListView, .iWidth = 30, .iWeight = 2}};
constexpr SControlResource DROP[] = {
    {.pszText = "Drop-down :"},
    {.uId = GALLERY_DROP, .eKind = EControlKind::DropDownList, .iWidth = 12, .iWeight = 1}};
constexpr SRowResource LIST_ROWS[] = {{.controls = LISTS, .iLines = 7, .iWeight = 1}, {DROP}};

constexpr SControlResource CANVAS[] = {
    {.uId = GALLERY_CANVAS, .eKind = EControlKind::Space, .iWidth = 46, .iWeight = 1}};
constexpr SRowResource CANVAS_ROWS[] = {{.controls = CANVAS, .iLines = 14}};

constexpr SControlResource QUESTIONS[] = {
    {.uId = GALLERY_DIALOG_BUTTON,
     .eKind = EControlKind::PushButton,
     .pszText = "Dialog...",
     .iWeight = 1},
    {.uId = GALLERY_MESSAGE,
     .eKind = EControlKind::PushButton,
     .pszText = "Message...",
     .iWeight = 1},
    {.uId = GALLERY_COLOR, .eKind = EControlKind::PushButton, .pszText = "Color...", .iWeight = 1},
    {.uId = GALLERY_MENU, .eKind = EControlKind::PushButton, .pszText = "Menu...", .iWeight = 1}};
constexpr SRowResource QUESTION_ROWS[] = {{QUESTIONS}};

constexpr SControlResource NOTES[] = {
    {.uId = GALLERY_NOTES, .eKind = EControlKind::ListBox, .iWidth = 40, .iWeight = 1}};
constexpr SRowResource NOTE_ROWS[] = {{.controls = NOTES, .iLines = 6, .iWeight = 1}};

constexpr SGroupResource GROUPS[] = {{"Buttons", BUTTON_ROWS},
                                     {"Fields", FIELD_ROWS},
                                     {"Lists", LIST_ROWS},
                                     {"Drawing at 16, 24 and 32 bits", CANVAS_ROWS, 1},
                                     {"Questions", QUESTION_ROWS, 1},
                                     {"Notifications", NOTE_ROWS, 1}};

constexpr SControlResource ANSWER_TEXT[] = {
    {.pszText = "Answer :"}, {.uId = GALLERY_EDIT, .eKind = EControlKind::Edit, .iWeight = 1}};
constexpr SControlResource ANSWERS[] = {
    {.eKind = EControlKind::Space, .iWeight = 1},
    {.uId = DIALOG_OK,
     .eKind = EControlKind::PushButton,
     .pszText = "OK",
     .iWidth = 10,
     .uStyle = CONTROL_DEFAULT},
    {.uId = DIALOG_CANCEL, .eKind = EControlKind::PushButton, .pszText = "Cancel", .iWidth = 10}};
constexpr SRowResource ANSWER_ROWS[] = {{ANSWER_TEXT}, {ANSWERS}};
constexpr SGroupResource ANSWER_GROUPS[] = {{nullptr, ANSWER_ROWS}};

constexpr SDialogResource DIALOGS[] = {{GALLERY_FORM, "Gallery", GROUPS},
                                       {GALLERY_DIALOG, "Dialog", ANSWER_GROUPS}};

constexpr SStringResource TIPS[] = {
    {GALLERY_PUSH, "Push button"},
    {GALLERY_CHECK, "Check box"},
    {GALLERY_THREE, "Check box with three states"},
    {GALLERY_TOGGLE, "Push-like check button"},
    {GALLERY_DRAWN, "Owner-drawn button"},
    {GALLERY_EDIT, "Edit"},
    {GALLERY_READ_ONLY, "Edit that is read only"},
    {GALLERY_SLIDER, "Slider"},
    {GALLERY_NUMBER, "Edit with a number, buddy of the spin button"},
    {GALLERY_SPIN, "Spin button"},
    {GALLERY_LIST, "List box"},
    {GALLERY_DROP, "Drop-down list"},
    {GALLERY_REPORT, "List view in report style"}};

} // namespace

const SResourceModule& GetGalleryResources()
{
    static const SResourceModule s_Module = {
        .pszName = "gallery", .strings = TIPS, .dialogs = DIALOGS};
    return s_Module;
}
