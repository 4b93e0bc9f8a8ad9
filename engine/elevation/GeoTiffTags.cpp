#include "engine/elevation/GeoTiffTags.h"

#include "engine/elevation/CTiffFile.h"
#include "engine/elevation/MapSystem.h"
#include "engine/elevation/ReportText.h"
#include "engine/elevation/SSampleGrid.h"

#include <tiffio.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

constexpr uint32_t TAG_TIE_POINT = 33922; // column, row, 0 and the place of that one
constexpr uint32_t TAG_MATRIX = 34264;    // four rows of four: column, row, 0, 1 to a place
constexpr uint32_t TAG_KEYS = 34735;      // as SGeoTags has them
constexpr uint32_t TAG_KEY_NUMBERS = 34736;
constexpr uint32_t TAG_KEY_NAMES = 34737;
constexpr uint32_t TAG_NO_DATA = 42113;

// Longer keys are none that a file of elevations has; a level keeps them as text.
constexpr size_t MOST_KEYS = 400;

// From columns and rows to places.
struct SAffine
{
    SMapPoint origin; // of column 0, row 0
    SMapPoint column; // from one to the next
    SMapPoint row;

    SMapPoint Map(double dColumn, double dRow) const
    {
        return {origin.dX + column.dX * dColumn + row.dX * dRow,
                origin.dY + column.dY * dColumn + row.dY * dRow};
    }

    bool IsFinite() const
    {
        return std::isfinite(origin.dX + origin.dY + column.dX + column.dY + row.dX + row.dY);
    }
};

// False without a place (of a spacing alone), and for one that is not finite.
bool ReadAffine(const CTiffFile& file, SAffine& affine)
{
    const auto scale = file.GetArray<double>(TAG_PIXEL_SCALE, TIFF_DOUBLE);
    const auto tie = file.GetArray<double>(TAG_TIE_POINT, TIFF_DOUBLE);
    const auto matrix = file.GetArray<double>(TAG_MATRIX, TIFF_DOUBLE);
    if (scale.size() >= 2 && tie.size() >= 6)
    {
        affine.column = {scale[0], 0.0};
        affine.row = {0.0, -scale[1]};
        affine.origin = {tie[3] - tie[0] * scale[0], tie[4] + tie[1] * scale[1]};
        return affine.IsFinite();
    }
    if (matrix.size() == 16)
    {
        affine.column = {matrix[0], matrix[4]};
        affine.row = {matrix[1], matrix[5]};
        affine.origin = {matrix[3], matrix[7]};
        return affine.IsFinite();
    }
    return false;
}

void ReadKeys(const CTiffFile& file, SGeoTags& geo)
{
    const auto keys = file.GetArray<uint16_t>(TAG_KEYS, TIFF_SHORT);
    const auto numbers = file.GetArray<double>(TAG_KEY_NUMBERS, TIFF_DOUBLE);
    const auto names = file.GetArray<char>(TAG_KEY_NAMES, TIFF_ASCII);
    if (keys.size() < 4 || keys.size() > MOST_KEYS || numbers.size() > MOST_KEYS ||
        names.size() > MOST_KEYS * 4 ||
        !std::all_of(numbers.begin(), numbers.end(), [](double d) { return std::isfinite(d); }))
    {
        return;
    }
    geo.keys.assign(keys.begin(), keys.end());
    geo.numbers.assign(numbers.begin(), numbers.end());
    geo.strNames.assign(names.begin(), std::find(names.begin(), names.end(), '\0'));
    // Keys refer to names by their place, which stays; a text of a level holds no control codes.
    std::replace_if(
        geo.strNames.begin(), geo.strNames.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
}

// The directory, for files that have none what must be said: other readers take degrees for
// lengths, and samples for cells.
std::vector<uint16_t> MakeKeys(const SGeoTags& geo)
{
    if (!geo.keys.empty() || (!geo.bDegrees && geo.bCells))
    {
        return geo.keys;
    }
    const uint16_t uRaster = geo.bCells ? RASTER_CELLS : RASTER_POINTS;
    std::vector<uint16_t> keys = {1, 1, 0, 1};
    if (geo.bDegrees)
    {
        keys.insert(keys.end(), {KEY_MODEL_TYPE, 0, 1, MODEL_GEOGRAPHIC});
        keys[3] = 2;
    }
    keys.insert(keys.end(), {KEY_RASTER_TYPE, 0, 1, uRaster});
    return keys;
}

bool SetDoubles(TIFF* pTiff, uint32_t uTag, const std::vector<double>& values)
{
    return values.empty() ||
           TIFFSetField(pTiff, uTag, static_cast<int>(values.size()), values.data()) == 1;
}

bool WriteKeys(TIFF* pTiff, const SGeoTags& geo)
{
    const std::vector<uint16_t> keys = MakeKeys(geo);
    return (keys.empty() ||
            TIFFSetField(pTiff, TAG_KEYS, static_cast<int>(keys.size()), keys.data()) == 1) &&
           SetDoubles(pTiff, TAG_KEY_NUMBERS, geo.numbers) &&
           (geo.strNames.empty() || TIFFSetField(pTiff, TAG_KEY_NAMES, geo.strNames.c_str()) == 1);
}

bool TellOfTags(TIFF* pTiff)
{
    static char s_aNames[][24] = {"ModelPixelScale",
                                  "ModelTiepoint",
                                  "ModelTransformation",
                                  "GeoKeyDirectory",
                                  "GeoDoubleParams",
                                  "GeoAsciiParams",
                                  "NoData"};
    const TIFFFieldInfo aFields[] = {
        {TAG_PIXEL_SCALE, -1, -1, TIFF_DOUBLE, FIELD_CUSTOM, 1, 1, s_aNames[0]},
        {TAG_TIE_POINT, -1, -1, TIFF_DOUBLE, FIELD_CUSTOM, 1, 1, s_aNames[1]},
        {TAG_MATRIX, -1, -1, TIFF_DOUBLE, FIELD_CUSTOM, 1, 1, s_aNames[2]},
        {TAG_KEYS, -1, -1, TIFF_SHORT, FIELD_CUSTOM, 1, 1, s_aNames[3]},
        {TAG_KEY_NUMBERS, -1, -1, TIFF_DOUBLE, FIELD_CUSTOM, 1, 1, s_aNames[4]},
        {TAG_KEY_NAMES, -1, -1, TIFF_ASCII, FIELD_CUSTOM, 1, 0, s_aNames[5]},
        {TAG_NO_DATA, -1, -1, TIFF_ASCII, FIELD_CUSTOM, 1, 0, s_aNames[6]},
    };
    return TIFFMergeFieldInfo(pTiff, aFields, std::size(aFields)) == 0;
}

} // namespace

void ReadGeoTags(const CTiffFile& file, SSampleInfo& info)
{
    SGeoTags geo;
    ReadKeys(file, geo);
    info.bInDegrees = IsGeographic(geo);
    const auto scale = file.GetArray<double>(TAG_PIXEL_SCALE, TIFF_DOUBLE);
    if (scale.size() >= 2 && std::isfinite(scale[0]) && std::isfinite(scale[1]))
    {
        info.dSpacingX = std::fabs(scale[0]);
        info.dSpacingZ = std::fabs(scale[1]);
    }
    SAffine affine;
    if (!ReadAffine(file, affine))
    {
        info.bBadPlace = !affine.IsFinite();
        return;
    }
    info.dSpacingX = std::hypot(affine.column.dX, affine.column.dY);
    info.dSpacingZ = std::hypot(affine.row.dX, affine.row.dY);
    geo.bCells = geo.FindKey(KEY_RASTER_TYPE).value_or(RASTER_CELLS) != RASTER_POINTS;
    const double dHalf = geo.bCells ? 0.5 : 0.0;
    geo.first = affine.Map(dHalf, dHalf);
    geo.lastX = affine.Map(info.uColumns - 1 + dHalf, dHalf);
    geo.lastZ = affine.Map(dHalf, info.uRows - 1 + dHalf);
    geo.bDegrees = info.bInDegrees;
    // Of a cell that has no extent nothing is known.
    geo.bKnown = info.dSpacingX > 0.0 && info.dSpacingZ > 0.0 && IsPlacePossible(geo);
    info.bBadPlace = !geo.bKnown;
    info.geo = geo.bKnown ? geo : SGeoTags();
}

bool WriteGeoTags(
    TIFF* pTiff, const SGeoTags& geo, const SMapPoint& spacing, uint32_t uColumns, uint32_t uRows)
{
    if (!TellOfTags(pTiff))
    {
        return false;
    }
    if (!geo.bKnown)
    {
        // Without a tie point there is a spacing and no place that nobody knows.
        return SetDoubles(pTiff, TAG_PIXEL_SCALE, {spacing.dX, spacing.dY, 0.0});
    }
    const double dColumns = uColumns - 1;
    const double dRows = uRows - 1;
    SAffine affine;
    affine.column = {(geo.lastX.dX - geo.first.dX) / dColumns,
                     (geo.lastX.dY - geo.first.dY) / dColumns};
    affine.row = {(geo.lastZ.dX - geo.first.dX) / dRows, (geo.lastZ.dY - geo.first.dY) / dRows};
    affine.origin = geo.first;
    // What a reader takes for the corner of the first cell.
    affine.origin = geo.bCells ? affine.Map(-0.5, -0.5) : affine.origin;
    const SMapPoint& o = affine.origin;
    const bool bPlaced =
        geo.IsNorthUp()
            ? SetDoubles(pTiff, TAG_PIXEL_SCALE, {affine.column.dX, -affine.row.dY, 0.0}) &&
                  SetDoubles(pTiff, TAG_TIE_POINT, {0.0, 0.0, 0.0, o.dX, o.dY, 0.0})
            : SetDoubles(pTiff,
                         TAG_MATRIX,
                         {affine.column.dX,
                          affine.row.dX,
                          0.0,
                          o.dX, //
                          affine.column.dY,
                          affine.row.dY,
                          0.0,
                          o.dY, //
                          0.0,
                          0.0,
                          0.0,
                          0.0,
                          0.0,
                          0.0,
                          0.0,
                          1.0});
    const std::string strNoData = geo.noData ? MakeExactText(*geo.noData) : "";
    return bPlaced && WriteKeys(pTiff, geo) &&
           (strNoData.empty() || TIFFSetField(pTiff, TAG_NO_DATA, strNoData.c_str()) == 1);
}
