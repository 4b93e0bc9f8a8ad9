#include "tests/framework/widgets/ControlsForm.h"

namespace
{

constexpr SControlResource BUTTONS[] = {
    {.uId = ID_PUSH, .eKind = EControlKind::PushButton, .pszText = "Push"},
    {.uId = ID_CHECK, .eKind = EControlKind::CheckBox, .pszText = "Check"},
    {.uId = ID_THREE, .eKind = EControlKind::ThreeState, .pszText = "Three"},
    {.uId = ID_TOGGLE, .eKind = EControlKind::PushCheck, .pszText = "Toggle"},
    {.uId = ID_DRAWN, .eKind = EControlKind::OwnerDraw, .pszText = "Drawn", .iWidth = 10}};
constexpr SControlResource NUMBERS[] = {
    {.pszText = "Number :"},
    {.uId = ID_EDIT, .eKind = EControlKind::Edit, .iWidth = 8},
    {.uId = ID_NUMBER, .eKind = EControlKind::Edit, .iWidth = 8},
    {.uId = ID_SLIDER, .eKind = EControlKind::Slider, .iWidth = 20, .iWeight = 1},
    {.uId = ID_SPIN, .eKind = EControlKind::Spin, .uStyle = CONTROL_NO_TAB}};
constexpr SControlResource LISTS[] = {
    {.uId = ID_LIST, .eKind = EControlKind::ListBox, .iWidth = 12, .iWeight = 1},
    {.uId = ID_DROP, .eKind = EControlKind::DropDownList, .iWidth = 12},
    {.uId = ID_REPORT, .eKind = EControlKind::ListView, .iWidth = 40, .iWeight = 2},
    {.uId = ID_AREA, .eKind = EControlKind::Space, .iWidth = 10}};
constexpr SRowResource ROWS[] = {
    {BUTTONS, 2}, {NUMBERS}, {.controls = LISTS, .iLines = 8, .iWeight = 1}};
constexpr SGroupResource GROUPS[] = {{"Controls", ROWS}};

constexpr SControlResource ANSWERS[] = {
    {.uId = ID_EDIT, .eKind = EControlKind::Edit, .iWidth = 8},
    {.uId = DIALOG_OK,
     .eKind = EControlKind::PushButton,
     .pszText = "OK",
     .uStyle = CONTROL_DEFAULT},
    {.uId = DIALOG_CANCEL, .eKind = EControlKind::PushButton, .pszText = "Cancel"}};
constexpr SRowResource ANSWER_ROWS[] = {{ANSWERS}};
constexpr SGroupResource ANSWER_GROUPS[] = {{nullptr, ANSWER_ROWS}};

constexpr SDialogResource DIALOGS[] = {{CONTROLS_FORM, "Controls", GROUPS},
                                       {CONTROLS_DIALOG, "Answers", ANSWER_GROUPS}};

} // namespace

const SResourceModule& GetControlsModule()
{
    static const SResourceModule s_Module = {.pszName = "controls", .dialogs = DIALOGS};
    return s_Module;
}

void CControlsForm::Open()
{
    ASSERT_TRUE(m_Form.Create(nullptr));
    GetWidget(m_Form)->resize(900, 400);
    m_Form.ShowWindow(true);
    QApplication::processEvents();
}

void CControlsForm::Note(ENotify eKind, uint32_t uId, const char* pszName)
{
    m_Form.On(
        eKind,
        uId,
        [this, pszName](SNotification& notification)
        { m_Notes.push_back(std::string(pszName) + " " + std::to_string(notification.iValue)); });
}
