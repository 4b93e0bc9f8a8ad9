#include "tellur/resources/Controls.h"
#include "tellur/resources/DialogTables.h"

namespace
{

constexpr int PATH_WIDTH = 24;
constexpr int SWATCH_WIDTH = 14; // "255, 255, 255" and the frame
constexpr int CURRENT_LINES = 2;

constexpr SControlResource MakePath(uint32_t uId)
{
    SControlResource control = MakeText(uId, 0);
    control.iWidth = PATH_WIDTH;
    return control;
}

constexpr SControlResource FILE_NAME[] = {MakeLabel("File :"), MakePath(2140), MakeBrowse(2141)};
constexpr SControlResource MATERIAL[] = {MakeLabel("Material :"), MakePath(2180), MakeBrowse(2181)};
constexpr SControlResource BLENDING[] = {MakeLabel("Blending :"), MakeSlider(2145)};
constexpr SControlResource MAPPING[] = {MakeLabel(""), MakeCheckBox(2191, "Texel mapping")};
constexpr SRowResource BITMAP_ROWS[] = {{FILE_NAME}, {MATERIAL}, {BLENDING}, {MAPPING}};

constexpr SControlResource SHAPE[] = {MakeLabel("Shape :"), MakeShape(2157, "Brush")};
constexpr SControlResource EXTENT[] = {
    MakeLabel("Extent :"), MakeSlider(2146), MakeNumber(2158), MakeSpinGap()};
constexpr SControlResource EXTENT_UNIT[] = {MakeLabel("Unit :"), MakeCheckBox(2184, "cm")};
constexpr SControlResource POWER[] = {
    MakeLabel("Power :"), MakeSlider(2134), MakeNumber(2108), MakeSpin(2109)};
constexpr SControlResource HARDNESS[] = {
    MakeLabel("Hardness :"), MakeSlider(2185), MakeNumber(2186), MakeSpin(2187)};
constexpr SRowResource BRUSH_ROWS[] = {
    {SHAPE, SHAPE_LINES}, {EXTENT}, {EXTENT_UNIT}, {POWER}, {HARDNESS}};

constexpr SControlResource STEPS[] = {
    {.uId = 2143, .eKind = EControlKind::PushCheck, .pszText = "Edit", .iWeight = 1},
    MakeWideButton(2117, "Undo"),
    MakeWideButton(2118, "Redo"),
    MakeWideButton(2156, "Save")};
constexpr SRowResource STEP_ROWS[] = {{STEPS}};

constexpr SControlResource RGB_BOXES[] = {
    MakeLabel("RGB"), MakeCheckBox(2161, "visible"), MakeCheckBox(2162, "editable")};
constexpr SControlResource RED_BOXES[] = {
    MakeLabel("Red"), MakeCheckBox(2163, "visible"), MakeCheckBox(2164, "editable")};
constexpr SControlResource GREEN_BOXES[] = {
    MakeLabel("Green"), MakeCheckBox(2165, "visible"), MakeCheckBox(2166, "editable")};
constexpr SControlResource BLUE_BOXES[] = {
    MakeLabel("Blue"), MakeCheckBox(2167, "visible"), MakeCheckBox(2168, "editable")};
constexpr SControlResource ALPHA_BOXES[] = {
    MakeLabel("Alpha"), MakeCheckBox(2169, "visible"), MakeCheckBox(2170, "editable")};
constexpr SRowResource CHANNEL_ROWS[] = {
    {RGB_BOXES}, {RED_BOXES}, {GREEN_BOXES}, {BLUE_BOXES}, {ALPHA_BOXES}};

constexpr SControlResource FUNCTIONS[] = {MakePushCheck(2171, "Set"), MakePushCheck(2176, "Mul")};
constexpr SRowResource FUNCTION_ROWS[] = {{FUNCTIONS}};

constexpr SControlResource MakeSwatch(uint32_t uId)
{
    return {.uId = uId, .eKind = EControlKind::OwnerDraw, .iWidth = SWATCH_WIDTH, .iWeight = 1};
}

constexpr SControlResource CURRENT[] = {MakeLabel("Current :"), MakeSwatch(2155)};
constexpr SControlResource COLORS_1[] = {MakeSwatch(2147), MakeSwatch(2148)};
constexpr SControlResource COLORS_2[] = {MakeSwatch(2149), MakeSwatch(2150)};
constexpr SControlResource COLORS_3[] = {MakeSwatch(2151), MakeSwatch(2152)};
constexpr SControlResource COLORS_4[] = {MakeSwatch(2153), MakeSwatch(2154)};
constexpr SRowResource COLOR_ROWS[] = {
    {CURRENT, CURRENT_LINES}, {COLORS_1}, {COLORS_2}, {COLORS_3}, {COLORS_4}};

// Left what is painted on and with which brush, right what is done to the texels.
constexpr SGroupResource GROUPS[] = {{"Bitmap", BITMAP_ROWS, 0},
                                     {"Brush", BRUSH_ROWS, 0},
                                     {nullptr, STEP_ROWS, 0},
                                     {"Channels", CHANNEL_ROWS, 1},
                                     {"Function", FUNCTION_ROWS, 1},
                                     {"Colors", COLOR_ROWS, 1}};

} // namespace

SDialogResource GetDrawDialog()
{
    return {2111, "Edit bitmap on terrain", GROUPS};
}
