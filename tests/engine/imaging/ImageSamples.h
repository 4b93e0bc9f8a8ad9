#pragma once

#include "host/Image.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

// Pictures whose every byte a test can work out, and an independent program to write and read them.

using Bytes = std::vector<uint8_t>;
using Colors = std::vector<std::array<uint8_t, 3>>;
using ImagePtr = std::unique_ptr<IImage>;
using PalettePtr = std::unique_ptr<IPalette>;

class CTestPalette : public IPalette
{
public:
    explicit CTestPalette(Colors Entries)
        : m_Entries(std::move(Entries))
    {
    }

    uint32_t GetCount() const override { return static_cast<uint32_t>(m_Entries.size()); }

    const uint8_t* GetEntry(uint32_t uIndex) const override
    {
        return uIndex < m_Entries.size() ? m_Entries[uIndex].data() : nullptr;
    }

    uint8_t FindIndex(uint8_t, uint8_t, uint8_t) const override { return 0; }

    IPalette* Clone() const override { return new CTestPalette(*this); }

private:
    Colors m_Entries;
};

inline Colors GetColors(const IPalette* pPalette)
{
    Colors Entries;
    for (uint32_t i = 0; pPalette != nullptr && i < pPalette->GetCount(); ++i)
    {
        const uint8_t* pEntry = pPalette->GetEntry(i);
        Entries.push_back({pEntry[0], pEntry[1], pEntry[2]});
    }
    return Entries;
}

inline size_t GetByteCount(const IImage& Image)
{
    return size_t{Image.GetWidth()} * Image.GetHeight() * Image.GetBitsPerPixel() / 8;
}

inline Bytes GetPixels(const IImage* pImage)
{
    return pImage == nullptr
               ? Bytes{}
               : Bytes(pImage->GetRawData(), pImage->GetRawData() + GetByteCount(*pImage));
}

// Numbers without a pattern that a codec could mistake for another order of rows or channels.
inline Bytes MakeNoise(size_t nBytes, uint32_t uBelow = 256)
{
    Bytes Noise(nBytes);
    uint32_t uState = 12345;
    for (uint8_t& uByte : Noise)
    {
        uState = uState * 1664525 + 1013904223;
        uByte = static_cast<uint8_t>((uState >> 16) % uBelow);
    }
    return Noise;
}

inline ImagePtr
MakeImage(uint32_t uWidth, uint32_t uHeight, EImageFormat eFormat, const Bytes& Pixels)
{
    return ImagePtr(IL_CreateImageFromBufferFormat(uWidth, uHeight, eFormat, Pixels.data()));
}

inline ImagePtr LoadImage(const std::string& strPath)
{
    return ImagePtr(IL_LoadImage(strPath.c_str()));
}

inline PalettePtr LoadPalette(const std::string& strPath)
{
    return PalettePtr(IL_LoadPalette(strPath.c_str()));
}

// Makes a new file: writing over an old one lets some file systems wait for the disk, and the tests
// of damage write tens of thousands.
inline void WriteFile(const std::string& strPath, const Bytes& Data)
{
    std::filesystem::remove(strPath);
    WriteBytes(strPath, std::string(Data.begin(), Data.end()));
}

inline Bytes ReadFile(const std::string& strPath)
{
    const std::string strBytes = ReadBytes(strPath);
    return {strBytes.begin(), strBytes.end()};
}

// Four bytes a pixel, whatever the image keeps: indices through the palette, grey without one,
// alpha 255 where there is none. An index without an entry is 0, 0, 0, 0.
inline Bytes GetRgba(const IImage* pImage, const IPalette* pPalette = nullptr)
{
    const Bytes Pixels = GetPixels(pImage);
    const size_t nStep = pImage != nullptr ? pImage->GetBitsPerPixel() / 8 : 1;
    Bytes Rgba;
    for (size_t i = 0; i < Pixels.size(); i += nStep)
    {
        static const std::array<uint8_t, 3> None = {};
        const std::array<uint8_t, 3> Grey = {Pixels[i], Pixels[i], Pixels[i]};
        const uint8_t* pEntry = pPalette != nullptr ? pPalette->GetEntry(Pixels[i]) : Grey.data();
        const uint8_t* pColor = nStep > 1 ? &Pixels[i] : pEntry != nullptr ? pEntry : None.data();
        Rgba.insert(Rgba.end(), pColor, pColor + 3);
        Rgba.push_back(nStep == 4 ? pColor[3]
                                  : static_cast<uint8_t>(pColor == None.data() ? 0 : 255));
    }
    return Rgba;
}

// Runs the independent image program; fails the test when that fails.
inline void RunConvert(const std::string& strArguments)
{
    const std::string strCommand = "convert " + strArguments;
    ASSERT_EQ(std::system(strCommand.c_str()), 0) << strCommand;
}
