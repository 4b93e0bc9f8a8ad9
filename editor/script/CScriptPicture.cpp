#include "editor/script/CScriptPicture.h"

#include "engine/terrain/CTerrain.h"
#include "engine/terrain/Relief.h"
#include "host/Image.h"

#include <algorithm>
#include <memory>

bool CScriptPicture::Write(const CTerrain& terrain, const std::string& strPath)
{
    const uint32_t uSizeX = terrain.GetVerticesX();
    const uint32_t uSizeZ = terrain.GetVerticesZ();
    const float* pHeights = terrain.GetHeightData();
    if (m_High <= m_Low)
    {
        const auto range = std::minmax_element(pHeights, pHeights + size_t{uSizeX} * uSizeZ);
        // Flat ground has no range of its own and gets that of all heights a terrain may have.
        const bool bFlat = *range.second <= *range.first;
        m_Low = bFlat ? 0.0F : *range.first;
        m_High = bFlat ? terrain.GetSize().y : *range.second;
    }
    SReliefOptions options;
    options.fLow = m_Low;
    options.fHigh = m_High;
    SReliefPicture picture;
    if (!RenderRelief(pHeights, uSizeX, uSizeZ, terrain.GetSize(), options, picture))
    {
        return false;
    }
    const std::unique_ptr<IImage> pImage(IL_CreateImageFromBufferFormat(
        picture.uWidth, picture.uHeight, EImageFormat::Rgb24, picture.rgb.data()));
    return pImage != nullptr && IL_SaveImage(strPath.c_str(), pImage.get(), nullptr);
}
