#include "tools/height/Picture.h"

#include "engine/terrain/HeightFile.h"
#include "engine/terrain/Relief.h"
#include "host/Image.h"
#include "host/Log.h"
#include "tools/height/Scene.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

namespace
{

constexpr uint32_t GAP_PIXELS = 8;
constexpr size_t PIXEL_BYTES = 3;

// Terrain of one height is drawn in the colours up to the height limit.
void TakeRange(const SHeightField& field, SReliefOptions& relief)
{
    const float* pHeights = field.pHeights.get();
    const auto [pLow, pHigh] = std::minmax_element(pHeights, pHeights + field.GetCount());
    const bool bFlat = *pHigh <= *pLow;
    relief.fLow = bFlat ? 0.0F : *pLow;
    relief.fHigh = bFlat ? std::fabs(field.size.y) : *pHigh;
}

// All pictures in a row, white between them and below shorter ones.
SReliefPicture Join(const std::vector<SReliefPicture>& pictures)
{
    SReliefPicture joined;
    for (const SReliefPicture& picture : pictures)
    {
        joined.uWidth += picture.uWidth + (joined.uWidth > 0 ? GAP_PIXELS : 0);
        joined.uHeight = std::max(joined.uHeight, picture.uHeight);
    }
    if (joined.uWidth > IMAGE_MAX_SIDE)
    {
        // The empty picture cannot be made an image, which Save reports.
        return {};
    }
    joined.rgb.assign(size_t{joined.uWidth} * joined.uHeight * PIXEL_BYTES, 255);
    size_t nLeft = 0;
    for (const SReliefPicture& picture : pictures)
    {
        const size_t nRow = picture.uWidth * PIXEL_BYTES;
        for (size_t y = 0; y < picture.uHeight; ++y)
        {
            std::copy_n(picture.rgb.data() + y * nRow,
                        nRow,
                        joined.rgb.data() + (y * joined.uWidth + nLeft) * PIXEL_BYTES);
        }
        nLeft += picture.uWidth + GAP_PIXELS;
    }
    return joined;
}

SSceneOptions GetCamera(const SHeightOptions& options)
{
    constexpr uint32_t WIDTH = 1280;
    const uint32_t uWidth = options.uPixels > 0 ? options.uPixels : WIDTH;
    SSceneOptions scene;
    scene.eye = *options.eye;
    scene.target = *options.target;
    scene.uWidth = uWidth;
    scene.uHeight = std::max(1U, uWidth * 9 / 16);
    return scene;
}

bool Draw(const SHeightOptions& options, std::vector<SReliefPicture>& pictures)
{
    SReliefOptions relief;
    relief.uLongerSide = options.uPixels;
    for (const std::string& strInput : options.inputs)
    {
        SHeightField field;
        if (!ReadHeightFile(strInput.c_str(), field))
        {
            return false;
        }
        if (pictures.empty())
        {
            TakeRange(field, relief);
        }
        if (options.eye)
        {
            SSceneOptions scene = GetCamera(options);
            scene.fLow = relief.fLow;
            scene.fHigh = relief.fHigh;
            pictures.push_back(RenderScene(field, scene));
            continue;
        }
        if (!RenderRelief(field.pHeights.get(),
                          field.uSizeX,
                          field.uSizeZ,
                          field.size,
                          relief,
                          pictures.emplace_back()))
        {
            CrashLog("[DrawPicture] %s: cannot be drawn\n", strInput.c_str());
            return false;
        }
    }
    return true;
}

bool Save(const std::string& strPath, const std::vector<SReliefPicture>& pictures)
{
    const SReliefPicture joined = Join(pictures);
    const std::unique_ptr<IImage> pImage(IL_CreateImageFromBufferFormat(
        joined.uWidth, joined.uHeight, EImageFormat::Rgb24, joined.rgb.data()));
    if (pImage == nullptr)
    {
        CrashLog("[DrawPicture] %s: the pictures together are too large\n", strPath.c_str());
        return false;
    }
    return IL_SaveImage(strPath.c_str(), pImage.get(), nullptr);
}

} // namespace

bool DrawPicture(const SHeightOptions& options)
{
    try
    {
        std::vector<SReliefPicture> pictures;
        return Draw(options, pictures) && Save(options.strOutput, pictures);
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[DrawPicture] %s: not enough memory\n", options.strOutput.c_str());
        return false;
    }
}
