#include "tellur/resources/FunctionFaces.h"
#include "tellur/resources/ResourceTables.h"

#include <iterator>
#include <vector>

namespace
{

// Texts of commands, and tooltips under the ids of the controls. The panel and the dialogs share
// one table, so a control that both have says the same in both. Those of the functions are in
// FunctionFaces.cpp. A tooltip has 79 bytes at most.
constexpr SStringResource STRINGS[] = {
    {1, "Use the selected color"},
    {2, "Keep the color as it was"},
    {2102, "Terrain"},
    {32796, "Save height map"},
    {32800, "Edit bitmap on terrain"},
    {32801, "Brush fade distance"}, // handed out for the STL export, and always was

    // the panel
    {2106, "Brush shape"},
    {2198, "Min extent size"},
    {2128, "Current extent size"},
    {2199, "Max extent size"},
    {2115, "Current extent size"},
    {2123, "Tool properties"},
    {2200, "Brush power"},
    {2201, "Brush power"},
    {2109, "Brush power"},
    {2136, "Brush fade distance"},
    {2121, "Brush fade distance"},
    {2122, "Brush fade distance"},
    {2203, "Brush hardness"},
    {2204, "Brush hardness"},
    {2187, "Brush hardness"},
    {2195, "Brush vertical distance"},
    {2196, "Brush vertical distance"},
    {2197, "Brush vertical distance"},
    {2192, "Brush mask file name"},
    {2194, "Enable brush mask"},
    {2193, "Browse"},
    {2119, "Add brush to predefined brushes list"},
    {2113, "Predefined brushes"},
    {2120, "Save predefined brushes"},
    {2138, "Terrain resolution (in vertices)"},
    {2127, "Export height map to file"},
    {2139, "Enable auto update terrain normals while editing"},
    {2129, "Update terrain normals"},
    {2205, "Terrain material used while editing"},
    {2206, "Browse"},

    // the bitmap on the terrain
    {2140, "Bitmap file to paint on the terrain"},
    {2141, "Browse"},
    {2180, "Terrain material used while painting"},
    {2181, "Browse"},
    {2145, "Blending with terrain color map factor"},
    {2191, "Mapping mode"},
    {2157, "Brush shape"},
    {2146, "Extent size"},
    {2158, "Extent size"},
    {2184, "Switches between display in cm (enabled) and pixels (disabled)"},
    {2134, "Brush power"},
    {2108, "Brush power"},
    {2185, "Brush hardness"},
    {2186, "Brush hardness"},
    {2143, "Start or stop painting on the terrain"},
    {2117, "Undo the last stroke"},
    {2118, "Redo the stroke undone last"},
    {2156, "Save the bitmap to its file"},
    {2161, "Show red, green and blue"},
    {2162, "Paint red, green and blue"},
    {2163, "Show red"},
    {2164, "Paint red only"},
    {2165, "Show green"},
    {2166, "Paint green only"},
    {2167, "Show blue"},
    {2168, "Paint blue only"},
    {2169, "Show alpha"},
    {2170, "Paint alpha only"},
    {2171, "The stroke sets the color"},
    {2176, "The stroke multiplies by the color"},
    {2147, "Click to use this color, double-click to change it"},
    {2148, "Click to use this color, double-click to change it"},
    {2149, "Click to use this color, double-click to change it"},
    {2150, "Click to use this color, double-click to change it"},
    {2151, "Click to use this color, double-click to change it"},
    {2152, "Click to use this color, double-click to change it"},
    {2153, "Click to use this color, double-click to change it"},
    {2154, "Click to use this color, double-click to change it"},
    {2155, "Current color, click to change it"},
};

} // namespace

std::span<const SStringResource> GetStringTable()
{
    static const std::vector<SStringResource> s_Strings = []
    {
        std::vector<SStringResource> strings(std::begin(STRINGS), std::end(STRINGS));
        for (const SFunctionFace& face : GetFunctionFaces())
        {
            strings.push_back({face.uButton, face.pszTip});
        }
        return strings;
    }();
    return s_Strings;
}
