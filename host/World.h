#pragma once

#include "host/HostTypes.h"

#include <string>

class IImage;
class IPalette;
class Terrain;

// Flags of a texture, ITexture::SetFlags.
enum ETextureFlags : uint32_t
{
    TEXTURE_BYTES = 14, // one byte a texel (grey)
};

// A picture the renderer shows. Made and counted by its World or texture manager.
class ITexture
{
public:
    virtual ~ITexture() = default;
    virtual const char* GetName() const = 0;
    virtual uint32_t GetWidth() const = 0; // texels
    virtual uint32_t GetHeight() const = 0;
    virtual void SetFlags(uint32_t uFlags) = 0; // ETextureFlags
    virtual uint32_t GetFlags() const = 0;
    // The texels as bytes, one a texel, row length GetWidth, top row first; valid until Unlock.
    virtual const uint8_t* LockBytes() = 0;
    virtual void Unlock() = 0;
    // Terrain units that one repeat of the texture covers when it is laid iRepeats times along
    // fLength; 0 for no repeats.
    virtual float GetXSize(float fLength, int iRepeats) const = 0;
};

class ITextureManager
{
public:
    virtual ~ITextureManager() = default;
    // Loads or shares a texture by file name (compared in lower case with '/'). iUsers: references
    // to count. Null with one logged line when the file is no image.
    virtual ITexture* Load(const char* pszName, int iUsers) = 0;
    // Gives one reference back; null is ignored.
    virtual void Release(ITexture* pTexture) = 0;
};

// A camera of a view. The plug-in only hands it back to EditorHost::LookFromDirection.
class ICamera
{
public:
    virtual ~ICamera() = default;
};

class ICameraList
{
public:
    virtual ~ICameraList() = default;
    virtual ICamera* GetCameraOfView(ViewId view) = 0; // null for a view without one
};

constexpr char ENVIRONMENT_CLASS[] = "Environment"; // as EditorHost::QueryEntityClass knows it

// The level's entity of that class.
class IEnvironment
{
public:
    virtual ~IEnvironment() = default;
    virtual const char* GetHeightMapName() const = 0; // file name as the level has it, may be empty
    virtual Terrain* GetTerrain() const = 0;          // null when the level has none
};

// The open level's scene. Owned by the engine. UI thread.
class World
{
public:
    virtual ~World() = default;

    // After the files of textures changed: everything that shows them is refreshed.
    virtual void OnTexturesChanged() = 0;
    // A texture made from the image (borrowed, copied). Given back with ReleaseTexture.
    virtual ITexture* CreateTextureFromImage(const IImage* pImage, const char* pszName) = 0;
    // Shows a texture on the terrain under a name; the handle is never 0 for a texture. The texture
    // stays its owner's and must outlive the registration.
    virtual uint32_t RegisterTerrainTexture(ITexture* pTexture, const char* pszName) = 0;
    virtual void ReleaseTexture(ITexture* pTexture) = 0; // null is ignored
    virtual void ReleaseTexture(uint32_t uHandle) = 0;   // 0 is ignored
    // As IL_SaveImage.
    virtual bool SaveImage(const char* pszPath, const IImage* pImage, const IPalette* pPalette) = 0;
    // Writes the overlay scale of a texture that covers fSize terrain units along x, 1 / fSize (0
    // for 0), to pElement, an element of an overlay transform. A texture that covers the whole
    // width covers the whole depth, too.
    virtual void MakeOverlayTransform(float* pElement, float fSize) = 0;
    // Bilinear height inside the cell, terrain units; positions outside are taken at the border. 0
    // without a terrain.
    virtual float GetTerrainHeight(float fX, float fZ) const = 0;
    virtual ICameraList* GetCameras() = 0;      // borrowed, never null
    virtual IEnvironment* GetEnvironment() = 0; // borrowed, null when the level has none
    virtual Terrain* GetTerrain() = 0;          // borrowed, null when the level has none
    // Reads the environment's height-map file again and replaces the terrain's heights.
    virtual void ReloadTerrain() = 0;
};
