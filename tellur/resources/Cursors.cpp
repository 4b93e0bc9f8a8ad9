#include "tellur/resources/FunctionFaces.h"
#include "tellur/resources/Pictures.h"
#include "tellur/resources/ResourceTables.h"

#include <vector>

namespace
{

constexpr int32_t HOT = 15; // the cross of every cursor, from its upper left corner

} // namespace

std::span<const SCursorResource> GetCursorTable()
{
    static const std::vector<SCursorResource> s_Cursors = []
    {
        std::vector<SCursorResource> cursors = {{2109, PICTURE_CURSOR_CROSS, HOT, HOT},
                                                {2113, PICTURE_CURSOR_EXTENT, HOT, HOT}};
        for (const SFunctionFace& face : GetFunctionFaces())
        {
            cursors.push_back(face.cursor);
        }
        return cursors;
    }();
    return s_Cursors;
}
