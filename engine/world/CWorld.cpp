#include "engine/world/CWorld.h"

#include "engine/terrain/CTerrain.h"
#include "engine/terrain/HeightFile.h"
#include "engine/world/CEnvironment.h"
#include "engine/world/CPlainTerrain.h"
#include "engine/world/CTexture.h"
#include "host/Log.h"
#include "host/Progress.h"
#include "host/TerrainSize.h"

#include <algorithm>
#include <cmath>

CWorld::CWorld() = default;
CWorld::~CWorld() = default;

ITexture* CWorld::CreateTextureFromImage(const IImage* pImage, const char* pszName)
{
    std::unique_ptr<IImage> pCopy(IL_CreateImageFromImage(pImage));
    if (pCopy == nullptr)
    {
        CrashLog("[CWorld::CreateTextureFromImage] no image for %s\n",
                 pszName != nullptr ? pszName : "a texture");
        return nullptr;
    }
    m_Textures.push_back(
        std::make_unique<CTexture>(pszName != nullptr ? pszName : "", std::move(pCopy), nullptr));
    return m_Textures.back().get();
}

uint32_t CWorld::RegisterTerrainTexture(ITexture* pTexture, const char* pszName)
{
    if (pTexture == nullptr)
    {
        return 0;
    }
    // A handle is never used twice: one that was given back finds nothing.
    ++m_LastHandle;
    m_Shown[m_LastHandle] = {pTexture, pszName != nullptr ? pszName : ""};
    return m_LastHandle;
}

void CWorld::ReleaseTexture(ITexture* pTexture)
{
    if (pTexture == nullptr)
    {
        return;
    }
    const auto found = std::find_if(m_Textures.begin(),
                                    m_Textures.end(),
                                    [pTexture](const auto& p) { return p.get() == pTexture; });
    if (found == m_Textures.end())
    {
        CrashLog("[CWorld::ReleaseTexture] not a texture of the world\n");
        return;
    }
    // Whatever shows it must let go before it is destroyed.
    ForgetTexture(pTexture);
    m_Textures.erase(found);
}

void CWorld::ReleaseTexture(uint32_t uHandle)
{
    if (uHandle != 0 && m_Shown.erase(uHandle) == 0)
    {
        CrashLog("[CWorld::ReleaseTexture] unknown handle %u\n", uHandle);
    }
}

bool CWorld::SaveImage(const char* pszPath, const IImage* pImage, const IPalette* pPalette)
{
    return IL_SaveImage(pszPath, pImage, pPalette);
}

void CWorld::MakeOverlayTransform(float* pElement, float fSize)
{
    if (pElement != nullptr)
    {
        *pElement = fSize != 0.0F ? 1.0F / fSize : 0.0F;
    }
}

float CWorld::GetTerrainHeight(float fX, float fZ) const
{
    return m_Terrain != nullptr ? m_Terrain->GetHeightAt(fX, fZ) : 0.0F;
}

ICameraList* CWorld::GetCameras()
{
    return &m_Cameras;
}

IEnvironment* CWorld::GetEnvironment()
{
    return m_Environment.get();
}

Terrain* CWorld::GetTerrain()
{
    // Made when it is first asked for, and again when the terrain is another object.
    if (m_bPlain && m_Terrain != nullptr && (m_Plain == nullptr || !m_Plain->IsOf(m_Terrain.get())))
    {
        m_Plain = std::make_unique<CPlainTerrain>(*m_Terrain);
    }
    return m_bPlain && m_Terrain != nullptr ? static_cast<Terrain*>(m_Plain.get())
                                            : m_Terrain.get();
}

void CWorld::ReloadTerrain()
{
    const std::string strName = m_Environment != nullptr ? m_Environment->GetReloadName() : "";
    if (strName.empty())
    {
        CrashLog("[CWorld::ReloadTerrain] the level names no height map\n");
        return;
    }
    if (m_Listener != nullptr)
    {
        m_Listener->OnBeforeReload();
    }
    const CUncancellable whole; // the file and the level would differ
    SHeightField field;
    // With the same heights nobody is told, and all that was made of them stays good.
    if (!ReadHeightFile(strName.c_str(), field) || m_Terrain->IsSameField(field))
    {
        return;
    }
    SHeightField before = m_Terrain->ReplaceField(std::move(field));
    if (m_Listener != nullptr)
    {
        m_Listener->OnReloaded(std::move(before));
    }
}

bool CWorld::CreateTerrain(uint32_t uCellsX, uint32_t uCellsZ, const SVec3& size)
{
    SHeightField field;
    field.size = size;
    // The cells are checked on their own first, because adding 1 to them could wrap.
    const bool bValid = uCellsX <= TERRAIN_MAX_CELLS && uCellsZ <= TERRAIN_MAX_CELLS &&
                        IsTerrainSizeValid(uCellsX + 1, uCellsZ + 1) && IsSizeVectorValid(size);
    if (!bValid || !field.Allocate(uCellsX + 1, uCellsZ + 1))
    {
        CrashLog("[CWorld::CreateTerrain] no terrain of %u x %u cells and size %g, %g, %g\n",
                 uCellsX,
                 uCellsZ,
                 static_cast<double>(size.x),
                 static_cast<double>(size.y),
                 static_cast<double>(size.z));
        return false;
    }
    ReplaceTerrain(std::move(field));
    m_Environment->SetHeightMapName("");
    return true;
}

bool CWorld::OpenTerrain(const char* pszHeightPath)
{
    SHeightField field;
    if (!ReadHeightFile(pszHeightPath, field))
    {
        return false;
    }
    const std::string strName = pszHeightPath; // may point into what is replaced
    ReplaceTerrain(std::move(field));
    m_Environment->SetHeightMapName(strName);
    return true;
}

void CWorld::TakeTerrain(SHeightField&& field)
{
    ReplaceTerrain(std::move(field));
    m_Environment->SetHeightMapName("");
}

void CWorld::SetTerrainListener(ITerrainListener* pListener)
{
    // Kept for terrains that come later as well.
    m_Listener = pListener;
    if (m_Terrain != nullptr)
    {
        m_Terrain->SetListener(pListener);
    }
}

void CWorld::CloseTerrain()
{
    // The environment points to the terrain, so it goes first.
    m_Environment.reset();
    m_Terrain.reset();
}

void CWorld::ForgetTexture(const ITexture* pTexture)
{
    for (auto& [uHandle, shown] : m_Shown)
    {
        shown.pTexture = shown.pTexture == pTexture ? nullptr : shown.pTexture;
    }
    if (m_Terrain != nullptr)
    {
        m_Terrain->ForgetTexture(pTexture);
    }
}

ITexture* CWorld::FindTerrainTexture(uint32_t uHandle) const
{
    const auto found = m_Shown.find(uHandle);
    return found != m_Shown.end() ? found->second.pTexture : nullptr;
}

void CWorld::ReplaceTerrain(SHeightField&& field)
{
    if (m_Environment == nullptr)
    {
        m_Environment = std::make_unique<CEnvironment>();
    }
    if (m_Terrain != nullptr)
    {
        // The object stays: modes and undo records have pointers to it.
        m_Terrain->ReplaceField(std::move(field));
        return;
    }
    m_Terrain = std::make_unique<CTerrain>(std::move(field));
    m_Terrain->SetListener(m_Listener);
    m_Environment->SetTerrain(m_Terrain.get());
}
