#pragma once

#include "host/Export.h"
#include "host/Image.h"
#include "host/World.h"

#include <memory>
#include <string>
#include <vector>

// A texture: an image in memory and the name it goes by. Owned by the world or by the texture
// manager that made it.
class TELLUR_API CTexture final : public ITexture
{
public:
    // pImage: not null. pPalette: the colours of an indexed image, or null.
    CTexture(std::string strName,
             std::unique_ptr<IImage> pImage,
             std::unique_ptr<IPalette> pPalette);
    ~CTexture() override;
    CTexture(const CTexture&) = delete;
    CTexture& operator=(const CTexture&) = delete;

    const char* GetName() const override { return m_Name.c_str(); }

    uint32_t GetWidth() const override { return m_Image->GetWidth(); }

    uint32_t GetHeight() const override { return m_Image->GetHeight(); }

    void SetFlags(uint32_t uFlags) override { m_Flags = uFlags; }

    uint32_t GetFlags() const override { return m_Flags; }

    // Grey values whatever the flags say: bytes as stored where they are grey, else the luminance
    // of the colours. Null when the image has no pixels.
    const uint8_t* LockBytes() override;

    void Unlock() override {} // grey values made once are kept: a drag locks at every step

    float GetXSize(float fLength, int iRepeats) const override;

    // Takes new contents under the same name. Bytes that a lock has given are no longer valid.
    void Replace(std::unique_ptr<IImage> pImage, std::unique_ptr<IPalette> pPalette);

    const IImage& GetImage() const { return *m_Image; }

    const IPalette* GetPalette() const { return m_Palette.get(); } // null: none

    // Unique in the process, another one after each Replace, for whoever keeps a copy of the
    // pixels.
    uint32_t GetRevision() const { return m_Revision; }

    // Textures of the process that were made and not destroyed.
    static uint32_t GetAliveCount();

private:
    bool MakeGrey();

    std::string m_Name;
    std::unique_ptr<IImage> m_Image;
    std::unique_ptr<IPalette> m_Palette;
    std::vector<uint8_t> m_Grey; // made at the first lock of a texture with colours
    uint32_t m_Flags = 0;
    uint32_t m_Revision;
};
