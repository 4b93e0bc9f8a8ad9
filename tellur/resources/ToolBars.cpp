#include "tellur/resources/ResourceTables.h"

#include <iterator>

namespace
{

constexpr SToolBarButtonResource TERRAIN_BUTTONS[] = {{2102, 0, 0}}; // opens and closes the panel
constexpr SToolBarResource TOOLBARS[] = {{2100, 16, 15, 2100, TERRAIN_BUTTONS}};

} // namespace

std::span<const SToolBarResource> GetToolBarTable()
{
    return TOOLBARS;
}
