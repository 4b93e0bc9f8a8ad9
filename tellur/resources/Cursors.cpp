#include "tellur/resources/Pictures.h"
#include "tellur/resources/ResourceTables.h"

namespace
{

constexpr int32_t HOT = 15; // the cross of every cursor, from its upper left corner

} // namespace

std::span<const SCursorResource> GetCursorTable()
{
    static const SCursorResource s_Cursors[] = {
        {2106, PICTURE_CURSOR_HEIGHT, HOT, HOT},
        {2107, PICTURE_CURSOR_POINT, HOT, HOT},
        {2108, PICTURE_CURSOR_BLUR, HOT, HOT},
        {2109, PICTURE_CURSOR_CROSS, HOT, HOT},
        {2110, PICTURE_CURSOR_RAMP, HOT, HOT},
        {2113, PICTURE_CURSOR_EXTENT, HOT, HOT},
        {2115, PICTURE_CURSOR_TERRACE, HOT, HOT},
    };
    return s_Cursors;
}
