#include "tellur/resources/FunctionFaces.h"
#include "tellur/resources/Pictures.h"
#include "tellur/resources/ResourceTables.h"

#include <vector>

std::span<const SBitmapResource> GetBitmapTable()
{
    static const std::vector<SBitmapResource> s_Bitmaps = []
    {
        std::vector<SBitmapResource> bitmaps = {{2100, PICTURE_TOOLBAR}};
        for (const SFunctionFace& face : GetFunctionFaces())
        {
            bitmaps.push_back(face.image);
        }
        return bitmaps;
    }();
    return s_Bitmaps;
}
