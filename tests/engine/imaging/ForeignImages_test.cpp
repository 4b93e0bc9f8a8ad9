#include "tests/engine/imaging/ImageSamples.h"
#include "tests/support/CLogCatcher.h"

// Files that another program wrote from pixels known here.
namespace
{

constexpr uint32_t WIDTH = 13;
constexpr uint32_t HEIGHT = 6;

struct SForeign
{
    const char* Source; // pixels handed to the program: rgb, rgba, gray
    uint32_t Levels;    // values a channel has, spread evenly from 0 to 255
    int Tolerance;
    const char* Arguments; // what makes the program write this kind
    const char* Target;    // prefix and extension of the file
    EImageFormat Format;
    bool Palette;
};

constexpr EImageFormat INDEXED = EImageFormat::Indexed8;
constexpr EImageFormat RGB = EImageFormat::Rgb24;
constexpr EImageFormat RGBA = EImageFormat::Rgba32;

// clang-format off
const SForeign Kinds[] = {
    {"rgb", 256, 0, "-define png:color-type=2", "png", RGB, false},
    {"rgba", 256, 0, "-define png:color-type=6", "png", RGBA, false},
    {"rgba", 256, 0, "-interlace PNG -define png:color-type=6", "png", RGBA, false},
    {"rgb", 256, 0, "-depth 16 -define png:bit-depth=16 -define png:color-type=2", "png", RGB, false},
    {"gray", 256, 0, "-define png:color-type=0 -define png:bit-depth=8", "png", INDEXED, false},
    {"gray", 16, 0, "-define png:color-type=0 -define png:bit-depth=4", "png", INDEXED, false},
    {"gray", 4, 0, "-interlace PNG -define png:color-type=0 -define png:bit-depth=2", "png", INDEXED, false},
    {"gray", 2, 0, "-define png:color-type=0 -define png:bit-depth=1", "png", INDEXED, false},
    {"gray", 256, 0, "-define png:color-type=4 -alpha on", "png", RGBA, false},
    {"rgb", 2, 0, "-define png:color-type=3 -define png:bit-depth=4", "png", INDEXED, true},
    {"rgb", 4, 0, "-interlace PNG -define png:color-type=3 -define png:bit-depth=8", "png", INDEXED, true},
    {"rgb", 256, 0, "", "BMP3:bmp", RGB, false},
    {"rgb", 256, 0, "", "BMP2:bmp", RGB, false},
    {"rgba", 256, 0, "", "bmp", RGBA, false},
    {"rgb", 2, 0, "-define bmp:subtype=RGB565", "bmp", RGB, false},
    {"rgb", 2, 0, "-define bmp:subtype=RGB555", "bmp", RGB, false},
    {"rgba", 16, 0, "-define bmp:subtype=ARGB4444", "bmp", RGBA, false},
    {"rgb", 2, 0, "-type Palette -compress none", "BMP3:bmp", INDEXED, true},
    {"rgb", 2, 0, "-type Palette -compress RLE", "BMP3:bmp", INDEXED, true},
    {"rgb", 4, 0, "-type Palette -compress none", "BMP3:bmp", INDEXED, true},
    {"rgb", 4, 0, "-type Palette -compress none", "BMP2:bmp", INDEXED, true},
    {"gray", 2, 0, "-type Bilevel", "BMP3:bmp", INDEXED, true},
    {"rgb", 256, 0, "-orient TopLeft -compress none", "tga", RGB, false},
    {"rgb", 2, 0, "-flip -orient BottomLeft -compress RLE", "tga", RGB, false},
    {"rgba", 2, 0, "-orient TopLeft -compress RLE", "tga", RGBA, false},
    {"rgba", 256, 0, "-flip -orient BottomLeft", "tga", RGBA, false},
    {"gray", 256, 0, "-flip -orient BottomLeft", "tga", INDEXED, false},
    {"gray", 2, 0, "-orient TopLeft -compress RLE", "tga", INDEXED, false},
    {"rgb", 2, 0, "-orient TopLeft -type Palette", "tga", INDEXED, true},
    {"rgb", 2, 0, "-flip -orient BottomLeft -type Palette -compress RLE", "tga", INDEXED, true},
    {"rgb", 256, 0, "-define dds:compression=none", "dds", RGB, false},
    {"rgba", 256, 0, "-define dds:compression=none", "dds", RGBA, false},
    {"gray", 256, 3, "-quality 100", "jpg", INDEXED, false},
    {"rgb", 256, 4, "-quality 100 -sampling-factor 4:4:4", "jpg", RGB, false},
    {"rgb", 256, 4, "-quality 100 -sampling-factor 4:4:4 -interlace JPEG", "jpg", RGB, false},
};

// clang-format on

size_t CountChannels(const std::string& strSource)
{
    return strSource == "gray" ? 1 : strSource.size();
}

Bytes MakeSource(const SForeign& Kind)
{
    Bytes Pixels = MakeNoise(CountChannels(Kind.Source) * WIDTH * HEIGHT, Kind.Levels);
    for (uint8_t& uByte : Pixels)
    {
        uByte = static_cast<uint8_t>(uByte * 255 / (Kind.Levels - 1));
    }
    return Pixels;
}

Bytes Widen(const Bytes& Pixels, size_t nChannels)
{
    Bytes Rgba;
    for (size_t i = 0; i < Pixels.size(); i += nChannels)
    {
        for (size_t k = 0; k < 3; ++k)
        {
            Rgba.push_back(Pixels[i + (nChannels == 1 ? 0 : k)]);
        }
        Rgba.push_back(nChannels == 4 ? Pixels[i + 3] : 255);
    }
    return Rgba;
}

} // namespace

TEST(ForeignImages, EveryKindGivesTheKnownPixels)
{
    const CTempFolder Folder;
    const CLogCatcher Log;
    for (const SForeign& Kind : Kinds)
    {
        SCOPED_TRACE(std::string(Kind.Source) + " " + std::to_string(Kind.Levels) + " " +
                     Kind.Arguments + " " + Kind.Target);
        const Bytes Source = MakeSource(Kind);
        WriteFile(Folder.Path("raw"), Source);
        const std::string strTarget = Kind.Target;
        const size_t nColon = strTarget.find(':') + 1;
        const std::string strPath = Folder.Path(("a." + strTarget.substr(nColon)).c_str());
        RunConvert("-size 13x6 -depth 8 " + (Kind.Source + (":" + Folder.Path("raw"))) + " " +
                   Kind.Arguments + " " + strTarget.substr(0, nColon) + strPath);
        const ImagePtr pImage = LoadImage(strPath);
        ASSERT_TRUE(pImage) << Log.GetText();
        const PalettePtr pPalette = LoadPalette(strPath);
        EXPECT_EQ(pPalette != nullptr, Kind.Palette);
        EXPECT_EQ(pImage->GetFormat(), Kind.Format);
        EXPECT_EQ(pImage->GetWidth(), WIDTH);
        const Bytes Expected = Widen(Source, CountChannels(Kind.Source));
        const Bytes Rgba = GetRgba(pImage.get(), pPalette.get());
        ASSERT_EQ(Rgba.size(), Expected.size());
        for (size_t i = 0; i < Rgba.size(); ++i)
        {
            ASSERT_NEAR(Rgba[i], Expected[i], Kind.Tolerance) << i;
        }
    }
    EXPECT_EQ(Log.GetText(), "");
}

// The compressed kinds keep a block of one colour exactly when its channels have few bits.
TEST(ForeignImages, CompressedDdsKeepsFlatBlocks)
{
    const CTempFolder Folder;
    const std::array<std::array<uint8_t, 4>, 4> Blocks = {
        {{255, 0, 0, 255}, {0, 255, 0, 255}, {0, 0, 255, 255}, {255, 255, 0, 255}}};
    Bytes Pixels;
    for (uint32_t i = 0; i < 64; ++i)
    {
        const auto& Color = Blocks[i / 32 * 2 + i % 8 / 4];
        Pixels.insert(Pixels.end(), Color.begin(), Color.end());
    }
    WriteFile(Folder.Path("raw"), Pixels);
    const std::string strPath = Folder.Path("a.dds");
    for (const char* pszKind : {"dxt1", "dxt5"})
    {
        RunConvert("-size 8x8 -depth 8 rgba:" + Folder.Path("raw") +
                   " -define dds:compression=" + pszKind + " -define dds:mipmaps=2 " + strPath);
        const ImagePtr pImage = LoadImage(strPath);
        ASSERT_TRUE(pImage);
        EXPECT_EQ(pImage->GetFormat(), EImageFormat::Rgba32);
        EXPECT_EQ(GetPixels(pImage.get()), Pixels) << pszKind;
    }
}

// Transparency in a palette does not turn indices into colours.
TEST(ForeignImages, APaletteWithTransparencyStaysIndexed)
{
    const CTempFolder Folder;
    const Bytes Pixels = {255, 0, 0, 255, 0, 255, 0, 0, 0, 0, 255, 255, 255, 0, 0, 255};
    WriteFile(Folder.Path("raw"), Pixels);
    const std::string strPath = Folder.Path("a.png");
    RunConvert("-size 4x1 -depth 8 rgba:" + Folder.Path("raw") + " PNG8:" + strPath);
    ASSERT_NE(ReadBytes(strPath).find("tRNS"), std::string::npos);
    const ImagePtr pImage = LoadImage(strPath);
    const PalettePtr pPalette = LoadPalette(strPath);
    ASSERT_TRUE(pImage && pPalette);
    EXPECT_EQ(pImage->GetFormat(), EImageFormat::Indexed8);
    const Bytes Rgba = GetRgba(pImage.get(), pPalette.get());
    for (const size_t i : {0, 2, 3})
    {
        EXPECT_EQ(Bytes(&Rgba[i * 4], &Rgba[i * 4 + 4]), Bytes(&Pixels[i * 4], &Pixels[i * 4 + 4]));
    }
}
