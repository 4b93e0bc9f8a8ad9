#include "tellur/resources/ResourceTables.h"

#include <iterator>

namespace
{

constexpr SMenuItemResource TERRAIN_ITEMS[] = {
    {32796, "Save height map...", nullptr},
    {32800, "Edit bitmap on terrain", nullptr},
    {32801, "Export terrain extent to STL", nullptr},
};
constexpr SMenuItemResource MENU_ITEMS[] = {
    {0, "Terrain", TERRAIN_ITEMS, std::size(TERRAIN_ITEMS)}};
constexpr SMenuResource MENUS[] = {{2116, MENU_ITEMS}};

} // namespace

std::span<const SMenuResource> GetMenuTable()
{
    return MENUS;
}
