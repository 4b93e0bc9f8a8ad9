#include "resources/Pictures.h"
#include "resources/ResourceTables.h"

#include <iterator>

namespace
{

constexpr int32_t HOT = 15; // the cross of every cursor, from its upper left corner

} // namespace

std::span<const SCursorResource> GetCursorTable()
{
    static const SCursorResource s_Cursors[] = {
        {2106, PICTURE_CURSOR_HEIGHT, PICTURE_CURSOR_HEIGHT_SIZE, HOT, HOT},
        {2107, PICTURE_CURSOR_POINT, PICTURE_CURSOR_POINT_SIZE, HOT, HOT},
        {2108, PICTURE_CURSOR_BLUR, PICTURE_CURSOR_BLUR_SIZE, HOT, HOT},
        {2109, PICTURE_CURSOR_CROSS, PICTURE_CURSOR_CROSS_SIZE, HOT, HOT},
        {2110, PICTURE_CURSOR_RAMP, PICTURE_CURSOR_RAMP_SIZE, HOT, HOT},
        {2113, PICTURE_CURSOR_EXTENT, PICTURE_CURSOR_EXTENT_SIZE, HOT, HOT},
        {2115, PICTURE_CURSOR_TERRACE, PICTURE_CURSOR_TERRACE_SIZE, HOT, HOT},
    };
    return s_Cursors;
}
