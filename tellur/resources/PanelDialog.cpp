#include "tellur/resources/Controls.h"
#include "tellur/resources/DialogTables.h"
#include "tellur/resources/FunctionFaces.h"

#include <vector>

namespace
{

constexpr size_t FUNCTIONS_IN_ROW = 6;
constexpr int FUNCTION_WIDTH = 6; // characters; a row of them is the panel's least width
constexpr int FUNCTION_LINES = 3; // room for a picture of 24 pixels, its frame and the step down
constexpr int GRID_LINES = 7;
constexpr int LIST_LINES = 5;

constexpr SControlResource SHAPE[] = {MakeLabel("Shape :"), MakeShape(2106, "Bitmap")};
constexpr SControlResource EXTENT[] = {
    MakeLabel("Extent :"), MakeSlider(2115), MakeNumber(2128), MakeSpinGap()};
constexpr SControlResource EXTENT_RANGE[] = {
    MakeLabel("Range :"), MakeWideNumber(2198), MakeLabel("to"), MakeWideNumber(2199)};
constexpr SControlResource POWER[] = {
    MakeLabel("Power :"), MakeSlider(2200), MakeNumber(2201), MakeSpin(2109)};
constexpr SControlResource FADE[] = {
    MakeLabel("Fade :"), MakeSlider(2136), MakeNumber(2121), MakeSpin(2122)};
constexpr SControlResource HARDNESS[] = {
    MakeLabel("Hardness :"), MakeSlider(2203), MakeNumber(2204), MakeSpin(2187)};
constexpr SControlResource VERTICAL_DISTANCE[] = {
    MakeLabel("Vert. dist. :"), MakeSlider(2195), MakeNumber(2196), MakeSpin(2197)};
constexpr SControlResource MASK[] = {MakeLabel("Mask :"),
                                     MakeCheckBox(2194, nullptr),
                                     MakeText(2192, CONTROL_READ_ONLY),
                                     MakeBrowse(2193)};
constexpr SControlResource ADD[] = {MakeWideButton(2119, "Add to defined brushes")};
constexpr SRowResource BRUSH_ROWS[] = {{SHAPE, SHAPE_LINES},
                                       {EXTENT},
                                       {EXTENT_RANGE},
                                       {POWER},
                                       {FADE},
                                       {HARDNESS},
                                       {VERTICAL_DISTANCE},
                                       {MASK},
                                       {ADD}};

constexpr SControlResource MakeFunction(uint32_t uId, const char* pszText)
{
    SControlResource control = MakePushCheck(uId, pszText);
    control.iWidth = FUNCTION_WIDTH;
    return control;
}

constexpr SControlResource PROPERTIES[] = {
    {.uId = 2123, .eKind = EControlKind::ListView, .iWeight = 1}};

// Buttons of the functions by their places, as many in a row as the least width of the panel holds,
// and the properties below them.
std::span<const SRowResource> GetToolRows()
{
    static const std::vector<SControlResource> s_Buttons = []
    {
        std::vector<SControlResource> buttons;
        for (const SFunctionFace* pFace : GetFunctionPlaces())
        {
            buttons.push_back(MakeFunction(pFace->uButton, pFace->pszButton));
        }
        while (buttons.size() % FUNCTIONS_IN_ROW != 0)
        {
            SControlResource space = MakeFunction(0, nullptr); // a last row has buttons as wide
            space.eKind = EControlKind::Space;
            buttons.push_back(space);
        }
        return buttons;
    }();
    static const std::vector<SRowResource> s_Rows = []
    {
        std::vector<SRowResource> rows;
        for (size_t i = 0; i < s_Buttons.size(); i += FUNCTIONS_IN_ROW)
        {
            rows.push_back({std::span(s_Buttons).subspan(i, FUNCTIONS_IN_ROW), FUNCTION_LINES});
        }
        rows.push_back({.controls = PROPERTIES, .iLines = GRID_LINES, .iWeight = 2});
        return rows;
    }();
    return s_Rows;
}

constexpr SControlResource BRUSH_LIST[] = {
    {.uId = 2113, .eKind = EControlKind::ListBox, .iWeight = 1}};
constexpr SControlResource SAVE_BRUSHES[] = {MakeWideButton(2120, "Save brushes")};
constexpr SRowResource DEFINED_ROWS[] = {
    {.controls = BRUSH_LIST, .iLines = LIST_LINES, .iWeight = 1}, {SAVE_BRUSHES}};

constexpr SControlResource RESOLUTION[] = {
    {.uId = 2138, .eKind = EControlKind::DropDownList, .iWeight = 1},
    MakeButton(2127, "Save as...")};
constexpr SRowResource HEIGHT_MAP_ROWS[] = {{RESOLUTION}};

constexpr SControlResource AUTO_UPDATE = {
    .uId = 2139, .eKind = EControlKind::CheckBox, .pszText = "enable auto-update", .iWeight = 1};
constexpr SControlResource NORMALS[] = {AUTO_UPDATE, MakeButton(2129, "Update now")};
constexpr SRowResource NORMALS_ROWS[] = {{NORMALS}};

constexpr SControlResource MATERIAL[] = {MakeText(2205, CONTROL_READ_ONLY), MakeBrowse(2206)};
constexpr SRowResource MATERIAL_ROWS[] = {{MATERIAL}};

} // namespace

// What the hand goes to all day is at the top, what is set once a level at the bottom.
SDialogResource GetPanelDialog()
{
    static const SGroupResource s_Groups[] = {{"Current brush", BRUSH_ROWS},
                                              {"Tool", GetToolRows()},
                                              {"Defined brushes", DEFINED_ROWS},
                                              {"Height map", HEIGHT_MAP_ROWS},
                                              {"Terrain normals", NORMALS_ROWS},
                                              {"Terrain material", MATERIAL_ROWS}};
    return {2101, "Terrain", s_Groups};
}
