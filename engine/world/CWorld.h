#pragma once

#include "engine/world/CCameraList.h"
#include "host/Export.h"
#include "host/World.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class CEnvironment;
class CPlainTerrain;
class CTerrain;
class CTexture;
class ITerrainListener;
struct SHeightField;

// The open level: its terrain and environment, the textures made for it, and the cameras of the
// views. Owned by the engine and alive as long as it, with and without a level. UI thread.
class TELLUR_API CWorld final : public World
{
public:
    CWorld();
    ~CWorld() override;

    void OnTexturesChanged() override {} // whoever draws them looks at their own revisions

    ITexture* CreateTextureFromImage(const IImage* pImage, const char* pszName) override;
    uint32_t RegisterTerrainTexture(ITexture* pTexture, const char* pszName) override;
    void ReleaseTexture(ITexture* pTexture) override;
    void ReleaseTexture(uint32_t uHandle) override;
    bool SaveImage(const char* pszPath, const IImage* pImage, const IPalette* pPalette) override;
    void MakeOverlayTransform(float* pElement, float fSize) override;
    float GetTerrainHeight(float fX, float fZ) const override;
    ICameraList* GetCameras() override;
    IEnvironment* GetEnvironment() override;
    Terrain* GetTerrain() override;
    // The terrain object stays the same one, also when the file has other sizes. A fault is one
    // logged line and keeps the heights. Cannot be cancelled.
    void ReloadTerrain() override;

    // Makes a new level of uCellsX x uCellsZ cells (1 to 16384 each), with all heights 0 and no
    // height-map name. False with one logged line; the level before then stays.
    bool CreateTerrain(uint32_t uCellsX, uint32_t uCellsZ, const SVec3& size);

    // Makes a level with the terrain of a ".height" file, whose name the environment keeps. False
    // with one logged line; the level before then stays.
    bool OpenTerrain(const char* pszHeightPath);

    // Makes a level with these heights, valid as for CTerrain, and no height-map name.
    void TakeTerrain(SHeightField&& field);

    // Sets who is told when heights of this world's terrain, whichever it is, meet a file. Borrowed
    // until the next call; null: nobody.
    void SetTerrainListener(ITerrainListener* pListener);

    void CloseTerrain(); // no level after this

    // From now on GetTerrain gives a terrain that is no ITerrainAccess, as in a host of another
    // make. Called before a level is open.
    void ShowPlainTerrain() { m_bPlain = true; }

    // pTexture is about to be destroyed: nothing shows it any longer. Handles stay the caller's.
    void ForgetTexture(const ITexture* pTexture);

    CTerrain* GetCTerrain() { return m_Terrain.get(); } // null without a level

    const CTerrain* GetCTerrain() const { return m_Terrain.get(); }

    CEnvironment* GetCEnvironment() { return m_Environment.get(); } // null without a level

    CCameraList& GetCameraList() { return m_Cameras; }

    // The texture behind a handle, borrowed; null for 0, an unknown handle or a texture that is
    // gone.
    ITexture* FindTerrainTexture(uint32_t uHandle) const;

    uint32_t GetRegistrationCount() const { return static_cast<uint32_t>(m_Shown.size()); }

private:
    struct SShownTexture
    {
        ITexture* pTexture = nullptr; // borrowed; null once it is gone
        std::string strName;
    };

    void ReplaceTerrain(SHeightField&& field);

    ITerrainListener* m_Listener = nullptr;
    std::unique_ptr<CTerrain> m_Terrain;
    std::unique_ptr<CPlainTerrain> m_Plain; // of the terrain, once it was asked for
    bool m_bPlain = false;
    std::unique_ptr<CEnvironment> m_Environment;
    CCameraList m_Cameras;
    std::vector<std::unique_ptr<CTexture>> m_Textures;
    std::map<uint32_t, SShownTexture> m_Shown; // by handle
    uint32_t m_LastHandle = 0;
};
