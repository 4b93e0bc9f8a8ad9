#include "resources/Pictures.h"
#include "resources/ResourceTables.h"

#include <iterator>

std::span<const SBitmapResource> GetBitmapTable()
{
    static const SBitmapResource s_Bitmaps[] = {
        {2100, PICTURE_TOOLBAR, PICTURE_TOOLBAR_SIZE},
    };
    return s_Bitmaps;
}
