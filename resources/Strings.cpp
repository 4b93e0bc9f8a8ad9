#include "resources/ResourceTables.h"

#include <iterator>

namespace
{

constexpr SStringResource STRINGS[] = {
    {2102, "Terrain"},
    {32796, "Save height map"},
    {32800, "Edit bitmap on terrain"},
    {32801, "Brush fade distance"}, // handed out for the STL export, and always was
};

} // namespace

std::span<const SStringResource> GetStringTable()
{
    return STRINGS;
}
