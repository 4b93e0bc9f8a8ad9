#include "tests/support/FakeWorld.h"

#include "host/Image.h"
#include "host/Reflection.h"

#include <locale.h>

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace
{

const char* OrNull(const char* pszText)
{
    return pszText != nullptr ? pszText : "null";
}

} // namespace

void AddCall(FakeCalls* pCalls, const char* pszFormat, ...)
{
    if (pCalls == nullptr)
    {
        return;
    }
    static const locale_t s_Neutral = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t before = uselocale(s_Neutral);
    char szLine[512];
    va_list arguments;
    va_start(arguments, pszFormat);
    std::vsnprintf(szLine, sizeof(szLine), pszFormat, arguments);
    va_end(arguments);
    uselocale(before);
    pCalls->emplace_back(szLine);
}

std::string ToText(const SExtents& box)
{
    FakeCalls text;
    AddCall(&text,
            "[%g %g %g, %g %g %g]",
            box.min.x,
            box.min.y,
            box.min.z,
            box.max.x,
            box.max.y,
            box.max.z);
    return text.front();
}

CFakeTerrain::CFakeTerrain(uint32_t uCellsAlongX,
                           uint32_t uCellsAlongZ,
                           const SVec3& sizeVector,
                           FakeCalls* pCallList)
    : uCellsX(uCellsAlongX)
    , uCellsZ(uCellsAlongZ)
    , size(sizeVector)
    , heights(static_cast<size_t>(uCellsAlongX + 1) * (uCellsAlongZ + 1), 0.0F)
    , pCalls(pCallList)
{
}

SVec3 CFakeTerrain::GetSize() const
{
    return {std::fabs(size.x), std::fabs(size.y), std::fabs(size.z)};
}

void CFakeTerrain::GetHeights(float* pDest, size_t nCount) const
{
    std::copy_n(heights.begin(), std::min(nCount, heights.size()), pDest);
}

void CFakeTerrain::SetHeights(const float* pSource, size_t nCount, const SExtents& box)
{
    if (pCalls != nullptr) // without a list no memory is asked for
    {
        AddCall(pCalls, "Terrain.SetHeights(%zu, %s)", nCount, ToText(box).c_str());
    }
    boxes.push_back(box);
    if (nCount != heights.size())
    {
        return;
    }
    constexpr float fSlack = 1.0e-3F; // of a cell
    const float fStepX = GetSize().x / static_cast<float>(uCellsX);
    const float fStepZ = GetSize().z / static_cast<float>(uCellsZ);
    for (size_t i = 0; i < nCount; ++i)
    {
        const auto fX = static_cast<float>(i % (uCellsX + 1));
        const auto fZ = static_cast<float>(i / (uCellsX + 1));
        if (fX >= box.min.x / fStepX - fSlack && fX <= box.max.x / fStepX + fSlack &&
            fZ >= box.min.z / fStepZ - fSlack && fZ <= box.max.z / fStepZ + fSlack)
        {
            heights[i] = pSource[i];
        }
    }
}

void CFakeTerrain::SetBlockHeights(int iBlockX,
                                   int iBlockZ,
                                   const SBlockEntry* pEntries,
                                   size_t nCount)
{
    AddCall(pCalls, "Terrain.SetBlockHeights(%d, %d, %zu)", iBlockX, iBlockZ, nCount);
    blocks.push_back({iBlockX, iBlockZ, {pEntries, pEntries + nCount}});
    for (size_t i = 0; i < nCount; ++i)
    {
        const int iX = iBlockX * 32 + static_cast<int>(pEntries[i].fLocalX);
        const int iZ = iBlockZ * 32 + static_cast<int>(pEntries[i].fLocalZ);
        if (iX >= 0 && iX <= static_cast<int>(uCellsX) && iZ >= 0 &&
            iZ <= static_cast<int>(uCellsZ))
        {
            At(iX, iZ) = pEntries[i].fHeight;
        }
    }
}

bool CFakeTerrain::SaveHeightMap(const char* pszPath,
                                 const float* pHeights,
                                 uint32_t uSizeX,
                                 uint32_t uSizeZ)
{
    AddCall(pCalls,
            "Terrain.SaveHeightMap(%s, %s, %u, %u)",
            OrNull(pszPath),
            pHeights != nullptr ? "heights" : "null",
            uSizeX,
            uSizeZ);
    return bFileResult;
}

void CFakeTerrain::GetHeightMap(float* pDest, uint32_t uVerticesPerSide) const
{
    for (uint32_t z = 0; z < uVerticesPerSide; ++z)
    {
        for (uint32_t x = 0; x < uVerticesPerSide; ++x)
        {
            const bool bInside = x <= uCellsX && z <= uCellsZ;
            *pDest++ = bInside ? heights[static_cast<size_t>(z) * (uCellsX + 1) + x] : 0.0F;
        }
    }
}

void CFakeTerrain::DrawProjectedTexture(const SExtents& box, ITexture* pTexture)
{
    AddCall(pCalls,
            "Terrain.DrawProjectedTexture(%s, %s)",
            ToText(box).c_str(),
            pTexture != nullptr ? pTexture->GetName() : "null");
}

bool CFakeTerrain::UpdateNormals()
{
    AddCall(pCalls, "Terrain.UpdateNormals()");
    return true;
}

void CFakeTerrain::SetEditOverlay(uint32_t uHandle)
{
    AddCall(pCalls, "Terrain.SetEditOverlay(%u)", uHandle);
}

void CFakeTerrain::SetEditOverlayTransform(const SMatrix4& transform)
{
    AddCall(pCalls, "Terrain.SetEditOverlayTransform()");
    overlayTransform = transform;
}

void CFakeTerrain::SetEditMaterial(const char* pszName)
{
    AddCall(pCalls, "Terrain.SetEditMaterial(%s)", OrNull(pszName));
}

bool CFakeTerrain::ExportToSTL(const char* pszPath, const SExtents* pBox)
{
    AddCall(pCalls,
            "Terrain.ExportToSTL(%s, %s)",
            OrNull(pszPath),
            pBox != nullptr ? ToText(*pBox).c_str() : "null");
    return bFileResult;
}

CFakeTexture::CFakeTexture(const char* pszName,
                           uint32_t uSizeX,
                           uint32_t uSizeZ,
                           std::vector<uint8_t> bytes)
    : strName(pszName)
    , uWidth(uSizeX)
    , uHeight(uSizeZ)
    , texels(std::move(bytes))
{
}

const uint8_t* CFakeTexture::LockBytes()
{
    ++nLocks;
    return texels.empty() ? nullptr : texels.data();
}

float CFakeTexture::GetXSize(float fLength, int iRepeats) const
{
    return fLength * 10.0F + static_cast<float>(iRepeats);
}

CFakeTexture&
CFakeTextureManager::Put(const char* pszName, uint32_t uW, uint32_t uH, std::vector<uint8_t> bytes)
{
    auto& pTexture = textures[pszName];
    pTexture = std::make_unique<CFakeTexture>(pszName, uW, uH, std::move(bytes));
    return *pTexture;
}

ITexture* CFakeTextureManager::Load(const char* pszName, int iUsers)
{
    AddCall(pCalls, "Textures.Load(%s, %d)", OrNull(pszName), iUsers);
    const auto found = textures.find(OrNull(pszName));
    if (found == textures.end())
    {
        return nullptr;
    }
    found->second->nUsers += iUsers;
    return found->second.get();
}

void CFakeTextureManager::Release(ITexture* pTexture)
{
    if (pTexture != nullptr)
    {
        AddCall(pCalls, "Textures.Release(%s)", pTexture->GetName());
        --static_cast<CFakeTexture*>(pTexture)->nUsers;
    }
}

ICamera* CFakeCameraList::GetCameraOfView(ViewId view)
{
    return std::count(viewsWithout.begin(), viewsWithout.end(), view) > 0 ? nullptr : &camera;
}

ITexture* CFakeWorld::CreateTextureFromImage(const IImage* pImage, const char* pszName)
{
    AddCall(pCalls,
            "World.CreateTextureFromImage(%s, %s)",
            pImage != nullptr ? "image" : "null",
            OrNull(pszName));
    if (pImage == nullptr)
    {
        return nullptr;
    }
    const size_t nBytes = static_cast<size_t>(pImage->GetWidth()) * pImage->GetHeight() *
                          (pImage->GetBitsPerPixel() / 8);
    const uint8_t* pBytes = pImage->GetRawData();
    textures.push_back(std::make_unique<CFakeTexture>(
        OrNull(pszName),
        pImage->GetWidth(),
        pImage->GetHeight(),
        pBytes != nullptr ? std::vector<uint8_t>(pBytes, pBytes + nBytes)
                          : std::vector<uint8_t>()));
    return textures.back().get();
}

uint32_t CFakeWorld::RegisterTerrainTexture(ITexture* pTexture, const char* pszName)
{
    AddCall(pCalls,
            "World.RegisterTerrainTexture(%s, %s)",
            pTexture != nullptr ? pTexture->GetName() : "null",
            OrNull(pszName));
    shown[m_NextHandle] = pTexture;
    return m_NextHandle++;
}

void CFakeWorld::ReleaseTexture(ITexture* pTexture)
{
    if (pTexture != nullptr)
    {
        AddCall(pCalls, "World.ReleaseTexture(%s)", pTexture->GetName());
        std::erase_if(textures, [pTexture](const auto& p) { return p.get() == pTexture; });
    }
}

void CFakeWorld::ReleaseTexture(uint32_t uHandle)
{
    AddCall(pCalls, "World.ReleaseTexture(%u)", uHandle);
    shown.erase(uHandle);
}

void CFakeWorld::MakeOverlayTransform(float* pElement, float fSize)
{
    AddCall(pCalls, "World.MakeOverlayTransform(%g)", fSize);
    *pElement = fSize != 0.0F ? 1.0F / fSize : 0.0F;
}

float CFakeWorld::GetTerrainHeight(float fX, float fZ) const
{
    const SVec3 size = pTerrain->GetSize();
    return pTerrain->At(
        static_cast<int>(std::lround(fX / size.x * static_cast<float>(pTerrain->uCellsX))),
        static_cast<int>(std::lround(fZ / size.z * static_cast<float>(pTerrain->uCellsZ))));
}

void CFakeWorld::ReloadTerrain()
{
    AddCall(pCalls, "World.ReloadTerrain()");
    if (pOnReload != nullptr)
    {
        pOnReload(*this);
    }
}

int CFakeEngineHost::ReloadTexture(const char* pszName)
{
    AddCall(pCalls, "Engine.ReloadTexture(%s)", pszName);
    if (reloadAnswers.empty())
    {
        return 1;
    }
    const int iAnswer = reloadAnswers.front();
    reloadAnswers.pop_front();
    return iAnswer;
}

CRTTIObject* CFakeEngineHost::FindObjectById(int32_t iId)
{
    for (CRTTIObject* pObject : objects)
    {
        if (pObject->GetObjectId() == iId)
        {
            return pObject;
        }
    }
    return nullptr;
}

void CFakeEngineHost::StepCameraVertical(ViewId view, float fStep)
{
    AddCall(pCalls, "Engine.StepCameraVertical(%u, %g)", view, fStep);
}

void CFakeEngineHost::StrafeCamera(ViewId view, const SVec3& offset)
{
    AddCall(pCalls, "Engine.StrafeCamera(%u, %g %g %g)", view, offset.x, offset.y, offset.z);
}

void CFakeEngineHost::DollyCamera(ViewId view, float fDistance)
{
    AddCall(pCalls, "Engine.DollyCamera(%u, %g)", view, fDistance);
}

void CFakeEngineHost::DrawLines(uint32_t uCount,
                                const SVec3* pPoints,
                                EPolyline eClosed,
                                const SColor& color)
{
    AddCall(pCalls, "Engine.DrawLines(%u, %d)", uCount, eClosed);
    linePoints.assign(pPoints, pPoints + uCount);
    lineColor = color;
}
