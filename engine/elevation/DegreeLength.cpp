#include "engine/elevation/DegreeLength.h"

#include <cctype>
#include <cmath>
#include <numbers>

namespace
{

// Reads one letter of two and digits behind it: a number, below 0 for the second letter.
bool ReadSide(std::string_view text, char cPositive, char cNegative, size_t nDigits, double& dSide)
{
    const auto cLetter = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    if (cLetter != cPositive && cLetter != cNegative)
    {
        return false;
    }
    dSide = 0.0;
    for (const char c : text.substr(1, nDigits))
    {
        if (c < '0' || c > '9')
        {
            return false;
        }
        dSide = dSide * 10.0 + (c - '0');
    }
    dSide = cLetter == cNegative ? -dSide : dSide;
    return true;
}

bool IsWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

} // namespace

SDegreeLength GetDegreeLength(double dLatitude)
{
    constexpr double RADIANS = std::numbers::pi / 180.0;
    constexpr double RADIUS = 6378137.0; // of the equator
    constexpr double FLATTENING = 1.0 / 298.257223563;
    constexpr double ECCENTRICITY = FLATTENING * (2.0 - FLATTENING); // its square
    const double dSine = std::sin(dLatitude * RADIANS);
    const double dRoot = std::sqrt(1.0 - ECCENTRICITY * dSine * dSine);
    // The radii of curvature of the circle of latitude's plane and of the meridian.
    return {RADIANS * std::cos(dLatitude * RADIANS) * RADIUS / dRoot,
            RADIANS * RADIUS * (1.0 - ECCENTRICITY) / (dRoot * dRoot * dRoot)};
}

bool FindTileCorner(std::string_view path, SMapPoint& corner)
{
    constexpr size_t LETTERS = 7; // "N46E007"
    const std::string_view name = path.substr(path.rfind('/') + 1);
    for (size_t i = 0; i + LETTERS <= name.size(); ++i)
    {
        SMapPoint found;
        // Not in the middle of a word or of a longer number.
        const bool bAlone = (i == 0 || !IsWordCharacter(name[i - 1])) &&
                            (i + LETTERS == name.size() || !IsWordCharacter(name[i + LETTERS]));
        if (bAlone && ReadSide(name.substr(i), 'N', 'S', 2, found.dY) &&
            ReadSide(name.substr(i + 3), 'E', 'W', 3, found.dX) && found.dY >= -90.0 &&
            found.dY < 90.0 && found.dX >= -180.0 && found.dX < 180.0)
        {
            corner = found;
            return true;
        }
    }
    return false;
}
