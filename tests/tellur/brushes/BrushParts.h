#pragma once

#include "host/FileSystem.h"
#include "host/Image.h"
#include "tests/support/CRecordingFunction.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// Saves pixels as a picture; the extension names the format.
inline void WritePicture(const std::string& strPath,
                         uint32_t uWidth,
                         uint32_t uHeight,
                         uint32_t uBitsPerPixel,
                         const std::vector<uint8_t>& bytes,
                         const IPalette* pPalette = nullptr)
{
    ASSERT_EQ(bytes.size(), size_t{uWidth} * uHeight * uBitsPerPixel / 8);
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferBPP(uWidth, uHeight, uBitsPerPixel, bytes.data()));
    ASSERT_TRUE(IL_SaveImage(strPath.c_str(), pImage.get(), pPalette));
}

// Makes a temporary folder the one that relative paths start from.
class CUserFolder : public CTempFolder
{
public:
    CUserFolder() { fs::set_user_root(GetFolder().c_str()); }

    ~CUserFolder() { fs::set_user_root(nullptr); }
};

// What a file holds after the writer has run on it.
template <class TFn> std::string GetWritten(TFn fnWrite)
{
    const CTempFolder folder;
    fs::ifile file;
    EXPECT_TRUE(file.open(folder.Path("written").c_str(), fs::mode_write));
    fnWrite(file);
    EXPECT_TRUE(file.close());
    return ReadBytes(folder.Path("written"));
}
