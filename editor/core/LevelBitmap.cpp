#include "editor/core/LevelBitmap.h"

#include "host/Image.h"
#include "host/Log.h"

#include <algorithm>
#include <memory>

bool MakeLevelBitmap(const std::string& strPath,
                     uint32_t uWidth,
                     uint32_t uHeight,
                     const std::array<uint8_t, 4>& color)
{
    const bool bSize = uWidth <= LEVEL_BITMAP_SIDE && uHeight <= LEVEL_BITMAP_SIDE;
    const std::unique_ptr<IImage> pImage(
        bSize ? IL_CreateImageFromBufferFormat(uWidth, uHeight, EImageFormat::Rgba32, nullptr)
              : nullptr);
    if (pImage == nullptr)
    {
        CrashLog("[MakeLevelBitmap] %s: no picture can have %u x %u pixels\n",
                 strPath.c_str(),
                 uWidth,
                 uHeight);
        return false;
    }
    uint8_t* pTexel = pImage->GetRawData();
    for (size_t i = 0; i < size_t{uWidth} * uHeight; ++i)
    {
        pTexel = std::copy(color.begin(), color.end(), pTexel);
    }
    return IL_SaveImage(strPath.c_str(), pImage.get(), nullptr);
}
