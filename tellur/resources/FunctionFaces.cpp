#include "tellur/resources/FunctionFaces.h"

#include "tellur/resources/Pictures.h"

#include <algorithm>
#include <vector>

namespace
{

constexpr int32_t HOT = 15; // the cross of every cursor, from its upper left corner

} // namespace

std::span<const SFunctionFace> GetFunctionFaces()
{
    static const SFunctionFace s_Faces[] = {
        {"PointHeightFunction",
         1,
         2131,
         "P",
         "Point height",
         "&Point height",
         EToolKind::Point,
         {2126, PICTURE_FUNCTION_POINT},
         {2107, PICTURE_CURSOR_POINT, HOT, HOT}},
        {"RelativeHeightFunction",
         3,
         2132,
         "R",
         "Relative height",
         "&Relative height",
         EToolKind::Add,
         {2129, PICTURE_FUNCTION_RELATIVE},
         {2106, PICTURE_CURSOR_HEIGHT, HOT, HOT}},
        {"BlurFunction",
         0,
         2130,
         "B",
         "Blur",
         "&Blur",
         EToolKind::Smooth,
         {2130, PICTURE_FUNCTION_BLUR},
         {2108, PICTURE_CURSOR_BLUR, HOT, HOT}},
        {"SetHeightFunction",
         2,
         2133,
         "S",
         "Set height",
         "&Set height",
         EToolKind::Level,
         {2125, PICTURE_FUNCTION_SET},
         {2106, PICTURE_CURSOR_HEIGHT, HOT, HOT}},
        {"RampFunction",
         5,
         2137,
         "Ra",
         "Ramp",
         "R&amp",
         EToolKind::Ramp,
         {2128, PICTURE_FUNCTION_RAMP},
         {2110, PICTURE_CURSOR_RAMP, HOT, HOT}},
        {"PosterizeFunction",
         4,
         2160,
         "Ps",
         "Posterize",
         "P&osterize",
         EToolKind::Terrace,
         {2127, PICTURE_FUNCTION_POSTERIZE},
         {2115, PICTURE_CURSOR_TERRACE, HOT, HOT}},
    };
    return s_Faces;
}

std::span<const SFunctionFace* const> GetFunctionPlaces()
{
    static const std::vector<const SFunctionFace*> s_Places = []
    {
        std::vector<const SFunctionFace*> places;
        for (const SFunctionFace& face : GetFunctionFaces())
        {
            places.push_back(&face);
        }
        std::stable_sort(places.begin(),
                         places.end(),
                         [](const auto* pA, const auto* pB) { return pA->iPlace < pB->iPlace; });
        return places;
    }();
    return s_Places;
}
