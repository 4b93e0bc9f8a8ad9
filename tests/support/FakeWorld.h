#pragma once

#include "host/EngineHost.h"
#include "host/Export.h"
#include "host/Terrain.h"
#include "host/World.h"

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

// Stand-ins for the engine's objects. Each writes the calls that change something or ask a person
// to one list, in the order they come, as lines such as "World.ReleaseTexture(101)"; plain getters
// leave no line. Numbers are written with %g. The list is borrowed, null for none.
using FakeCalls = std::vector<std::string>;

void AddCall(FakeCalls* pCalls, const char* pszFormat, ...) TELLUR_PRINTF(2, 3);
std::string ToText(const SExtents& box); // "[min x y z, max x y z]"

// Heights in a plain vector. SetHeights takes only the vertices under the box, as a terrain that
// rebuilds no more than it must: a box that is too small shows as a wrong height.
class CFakeTerrain : public Terrain
{
public:
    struct SBlockWrite
    {
        int iBlockX = 0;
        int iBlockZ = 0;
        std::vector<SBlockEntry> entries;
    };

    CFakeTerrain(uint32_t uCellsAlongX,
                 uint32_t uCellsAlongZ,
                 const SVec3& sizeVector,
                 FakeCalls* pCallList = nullptr);

    void GetHeights(float* pDest, size_t nCount) const override;
    void SetHeights(const float* pSource, size_t nCount, const SExtents& box) override;
    void
    SetBlockHeights(int iBlockX, int iBlockZ, const SBlockEntry* pEntries, size_t nCount) override;
    bool SaveHeightMap(const char* pszPath,
                       const float* pHeights,
                       uint32_t uSizeX,
                       uint32_t uSizeZ) override;
    void GetHeightMap(float* pDest, uint32_t uVerticesPerSide) const override;
    void DrawProjectedTexture(const SExtents& box, ITexture* pTexture) override;
    bool UpdateNormals() override;
    void SetEditOverlay(uint32_t uHandle) override;
    void SetEditOverlayTransform(const SMatrix4& transform) override;
    void SetEditMaterial(const char* pszName) override;
    bool ExportToSTL(const char* pszPath, const SExtents* pBox) override;
    SVec3 GetSize() const override;

    SVec3 GetSizeVector() const override { return size; }

    uint32_t GetCellsPerSide() const override { return uCellsX; }

    uint32_t GetCellsPerSideZ() const override { return uCellsZ; }

    float& At(int iX, int iZ)
    {
        return heights[static_cast<size_t>(iZ) * (uCellsX + 1) + static_cast<size_t>(iX)];
    }

    uint32_t uCellsX; // changing them by hand is a change of resolution; heights stay
    uint32_t uCellsZ;
    SVec3 size;
    std::vector<float> heights;
    std::vector<SExtents> boxes; // of SetHeights
    std::vector<SBlockWrite> blocks;
    SMatrix4 overlayTransform;
    bool bFileResult = true; // of SaveHeightMap and ExportToSTL
    FakeCalls* pCalls;
};

class CFakeTexture : public ITexture
{
public:
    CFakeTexture(const char* pszName, uint32_t uSizeX, uint32_t uSizeZ, std::vector<uint8_t> bytes);

    const char* GetName() const override { return strName.c_str(); }

    uint32_t GetWidth() const override { return uWidth; }

    uint32_t GetHeight() const override { return uHeight; }

    void SetFlags(uint32_t uNewFlags) override { uFlags = uNewFlags; }

    uint32_t GetFlags() const override { return uFlags; }

    const uint8_t* LockBytes() override;

    void Unlock() override { --nLocks; }

    float GetXSize(float fLength, int iRepeats) const override;

    std::string strName;
    uint32_t uWidth;
    uint32_t uHeight;
    std::vector<uint8_t> texels; // empty: LockBytes gives null
    uint32_t uFlags = 0;
    int nLocks = 0; // open ones
    int nUsers = 0; // references at the texture manager
};

// Knows the textures that a test has put in by name.
class CFakeTextureManager : public ITextureManager
{
public:
    explicit CFakeTextureManager(FakeCalls* pCallList)
        : pCalls(pCallList)
    {
    }

    CFakeTexture& Put(const char* pszName, uint32_t uW, uint32_t uH, std::vector<uint8_t> bytes);

    ITexture* Load(const char* pszName, int iUsers) override;
    void Release(ITexture* pTexture) override; // null leaves no line

    std::map<std::string, std::unique_ptr<CFakeTexture>> textures;
    FakeCalls* pCalls;
};

class CFakeEnvironment : public IEnvironment
{
public:
    const char* GetHeightMapName() const override { return strHeightMap.c_str(); }

    Terrain* GetTerrain() const override { return pTerrain; }

    std::string strHeightMap;
    Terrain* pTerrain = nullptr;
};

// Gives one camera to every view but those in the list.
class CFakeCameraList : public ICameraList
{
public:
    ICamera* GetCameraOfView(ViewId view) override;

    std::vector<ViewId> viewsWithout = {NO_VIEW};
    ICamera camera;
};

class CFakeWorld : public World
{
public:
    explicit CFakeWorld(FakeCalls* pCallList)
        : pCalls(pCallList)
    {
    }

    void OnTexturesChanged() override { AddCall(pCalls, "World.OnTexturesChanged()"); }

    ITexture* CreateTextureFromImage(const IImage* pImage, const char* pszName) override;
    uint32_t RegisterTerrainTexture(ITexture* pTexture, const char* pszName) override;
    void ReleaseTexture(ITexture* pTexture) override;
    void ReleaseTexture(uint32_t uHandle) override;

    bool SaveImage(const char* pszPath, const IImage* pImage, const IPalette* pPalette) override
    {
        return pSaveImage == nullptr || pSaveImage(pszPath, pImage, pPalette);
    }

    void MakeOverlayTransform(float* pElement, float fSize) override;
    float GetTerrainHeight(float fX, float fZ) const override; // of the nearest vertex

    ICameraList* GetCameras() override { return &cameras; }

    IEnvironment* GetEnvironment() override { return pEnvironment; }

    Terrain* GetTerrain() override { return pTerrain; }

    void ReloadTerrain() override;

    // What SaveImage does; null: nothing, and it succeeds.
    bool (*pSaveImage)(const char*, const IImage*, const IPalette*) = nullptr;
    CFakeTerrain* pTerrain = nullptr;
    IEnvironment* pEnvironment = nullptr;
    CFakeCameraList cameras;
    std::vector<std::unique_ptr<CFakeTexture>> textures; // made and not released
    std::map<uint32_t, ITexture*> shown;                 // by handle, 101 and up
    void (*pOnReload)(CFakeWorld&) = nullptr;            // what ReloadTerrain does
    FakeCalls* pCalls;

private:
    uint32_t m_NextHandle = 101;
};

class CFakeEngineHost : public EngineHost
{
public:
    CFakeEngineHost(World* pTheWorld, FakeCalls* pCallList)
        : pWorld(pTheWorld)
        , pCalls(pCallList)
    {
    }

    int ReloadTexture(const char* pszName) override;

    ITextMacroTable* GetTextMacroTable() override { return pMacros; }

    World* GetWorld() override { return pWorld; }

    CRTTIObject* FindObjectById(int32_t iId) override;

    std::vector<CRTTIObject*> GetObjects() override { return objects; }

    void StepCameraVertical(ViewId view, float fStep) override;
    void StrafeCamera(ViewId view, const SVec3& offset) override;
    void DollyCamera(ViewId view, float fDistance) override;

    void DrawLine(const SVec3&, const SVec3&, const SColor&) override {}

    void DrawLines(uint32_t uCount,
                   const SVec3* pPoints,
                   EPolyline eClosed,
                   const SColor& color) override;

    World* pWorld;
    std::deque<int> reloadAnswers; // of ReloadTexture, in order; 1 after them
    std::vector<CRTTIObject*> objects;
    ITextMacroTable* pMacros = nullptr;
    std::vector<SVec3> linePoints; // of the last DrawLines
    SColor lineColor;
    FakeCalls* pCalls;
};
