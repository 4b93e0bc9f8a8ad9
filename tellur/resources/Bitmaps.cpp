#include "tellur/resources/Pictures.h"
#include "tellur/resources/ResourceTables.h"

std::span<const SBitmapResource> GetBitmapTable()
{
    static const SBitmapResource s_Bitmaps[] = {
        {2100, PICTURE_TOOLBAR},
        {2125, PICTURE_FUNCTION_SET},
        {2126, PICTURE_FUNCTION_POINT},
        {2127, PICTURE_FUNCTION_POSTERIZE},
        {2128, PICTURE_FUNCTION_RAMP},
        {2129, PICTURE_FUNCTION_RELATIVE},
        {2130, PICTURE_FUNCTION_BLUR},
    };
    return s_Bitmaps;
}
