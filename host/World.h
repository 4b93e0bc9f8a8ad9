#pragma once

#include "host/HostTypes.h"

#include <string>

class IImage;
class IPalette;
class Terrain;

// The open level's scene and its textures. EngineHost::GetWorld gives the one World, which lives as
// long as the engine; what is in it changes with the level, so cameras, environment and terrain are
// asked for anew at each use. All of it is called by the plug-in, on the UI thread; only
// ReloadTerrain calls back (see IPlugin.h).
//
// Textures: a picture of a file comes from the ITextureManager of EditorHost::GetTextureManager,
// counted by its users, each of which gives it back once; one that the plug-in has drawn itself
// from CreateTextureFromImage, back to ReleaseTexture. Either may be registered with the terrain,
// which hands out a number and keeps a pointer: first the number is given back, then the texture.
// All that belongs to a level is given back in IPlugin::ReleaseWorldResources.

// Flags of a texture, ITexture::SetFlags.
enum ETextureFlags : uint32_t
{
    TEXTURE_BYTES = 14, // one byte a texel (grey)
};

// A picture the renderer shows. Made, counted and freed by its World or texture manager.
class ITexture
{
public:
    virtual ~ITexture() = default;
    virtual const char* GetName() const = 0;    // as it was loaded or created; borrowed
    virtual uint32_t GetWidth() const = 0;      // texels
    virtual uint32_t GetHeight() const = 0;     // texels
    virtual void SetFlags(uint32_t uFlags) = 0; // ETextureFlags: how it is going to be locked
    virtual uint32_t GetFlags() const = 0;      // as they were set, 0 at first
    // Gives GetWidth * GetHeight bytes, one a texel (luminance), top row first, valid until Unlock,
    // which follows each lock that gave them. Null when there is no memory.
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
    // Loads or shares a texture by file name (compared in lower case with '/'), borrowed until its
    // last reference is given back. iUsers: references to count, 1 at least. Null with one logged
    // line when the file is no image.
    virtual ITexture* Load(const char* pszName, int iUsers) = 0;
    // Gives one reference back; null is ignored, a texture of somebody else is one logged line.
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
    virtual ICamera* GetCameraOfView(ViewId view) = 0; // borrowed; null for a view without one
};

constexpr char ENVIRONMENT_CLASS[] = "Environment"; // as EditorHost::QueryEntityClass knows it

// The level's entity of that class.
class IEnvironment
{
public:
    virtual ~IEnvironment() = default;
    virtual const char*
    GetHeightMapName() const = 0;            // file name as the level has it; borrowed, never null
    virtual Terrain* GetTerrain() const = 0; // borrowed, null when the level has none
};

class World
{
public:
    virtual ~World() = default;

    // Called after the files of textures have changed, so that what shows them may follow.
    virtual void OnTexturesChanged() = 0;
    // Makes a texture with a copy of the image, which the world owns until ReleaseTexture. Null for
    // a null image, with one logged line.
    virtual ITexture* CreateTextureFromImage(const IImage* pImage, const char* pszName) = 0;
    // Makes a texture known to Terrain::SetEditOverlay; the handle is 0 only for null. The texture
    // stays its owner's.
    virtual uint32_t RegisterTerrainTexture(ITexture* pTexture, const char* pszName) = 0;
    // Give back what the two above returned: null and 0 are ignored, what is unknown is one logged
    // line.
    virtual void ReleaseTexture(ITexture* pTexture) = 0;
    virtual void ReleaseTexture(uint32_t uHandle) = 0;
    // Writes a picture as IL_SaveImage does. False with one logged line.
    virtual bool SaveImage(const char* pszPath, const IImage* pImage, const IPalette* pPalette) = 0;
    // Writes the overlay scale of a texture that covers fSize terrain units along x, 1 / fSize (0
    // for 0), to one float, pElement, an element of an overlay transform; null is ignored. A
    // texture that covers the whole width covers the whole depth, too.
    virtual void MakeOverlayTransform(float* pElement, float fSize) = 0;
    // Bilinear height inside the cell, terrain units; positions outside are taken at the border. 0
    // without a terrain.
    virtual float GetTerrainHeight(float fX, float fZ) const = 0;
    virtual ICameraList* GetCameras() = 0;      // borrowed, never null
    virtual IEnvironment* GetEnvironment() = 0; // borrowed, null when the level has none
    virtual Terrain* GetTerrain() = 0;          // borrowed, null when the level has none
    // Reads the environment's height-map file again and replaces the terrain's heights, unless they
    // are the same. A file that cannot be read, and none, is one logged line, and the heights stay.
    virtual void ReloadTerrain() = 0;
};
