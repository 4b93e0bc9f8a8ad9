#include "engine/elevation/MapSystem.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace
{

constexpr uint16_t ANGLE_DEGREES = 9102;
constexpr uint16_t NO_CODE = 32767; // the file describes a system of its own

// What keys call the system: the first part of the names, which bars divide; some programs write
// "PCS Name = " before it.
std::string GetName(const SGeoTags& geo)
{
    std::string strFirst = geo.strNames.substr(0, geo.strNames.find('|'));
    const size_t nEqual = strFirst.find("= ");
    strFirst = nEqual == std::string::npos ? strFirst : strFirst.substr(nEqual + 2);
    const size_t nEnd = strFirst.find_last_not_of(' ');
    return nEnd == std::string::npos ? "" : strFirst.substr(0, nEnd + 1);
}

} // namespace

bool IsGeographic(const SGeoTags& geo)
{
    const std::optional<uint16_t> model = geo.FindKey(KEY_MODEL_TYPE);
    const bool bSystem =
        geo.FindKey(KEY_GEOGRAPHIC_SYSTEM).has_value() && !geo.FindKey(KEY_PROJECTED_SYSTEM);
    return (model ? *model == MODEL_GEOGRAPHIC : bSystem) &&
           geo.FindKey(KEY_ANGLE_UNIT).value_or(ANGLE_DEGREES) == ANGLE_DEGREES;
}

bool IsPlacePossible(const SGeoTags& geo)
{
    constexpr double POLE = 90.5; // cells may reach over it by half their side
    const SMapPoint corners[] = {geo.first, geo.lastX, geo.lastZ, geo.GetLast()};
    return std::all_of(std::begin(corners),
                       std::end(corners),
                       [&geo](const SMapPoint& corner)
                       {
                           return std::isfinite(corner.dX) && std::isfinite(corner.dY) &&
                                  (!geo.bDegrees || std::fabs(corner.dY) <= POLE);
                       });
}

std::string GetSystemText(const SGeoTags& geo)
{
    const std::optional<uint16_t> projected = geo.FindKey(KEY_PROJECTED_SYSTEM);
    const uint16_t uCode =
        projected ? *projected : geo.FindKey(KEY_GEOGRAPHIC_SYSTEM).value_or(NO_CODE);
    const std::string strName = GetName(geo);
    if (uCode == NO_CODE || uCode == 0)
    {
        return !strName.empty() ? strName : geo.bDegrees ? "longitude and latitude" : "";
    }
    return "EPSG " + std::to_string(uCode) + (strName.empty() ? "" : " (" + strName + ")");
}

std::string GetPlaceText(const SMapPoint& point)
{
    const auto getText = [](double dValue)
    {
        constexpr int DIGITS = 10;
        char aText[40];
        const auto [pEnd, error] = std::to_chars(
            std::begin(aText), std::end(aText), dValue + 0.0, std::chars_format::general, DIGITS);
        return std::string(aText, pEnd);
    };
    return getText(point.dX) + ", " + getText(point.dY);
}
