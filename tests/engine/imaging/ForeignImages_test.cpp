#include "tests/engine/imaging/ImageSamples.h"
#include "tests/support/CLogCatcher.h"

// Files that another program wrote from pixels known here.
namespace
{

constexpr uint32_t WIDTH = 13;
constexpr uint32_t HEIGHT = 6;

struct SForeign
{
    std::string Source; // pixels handed to the program: rgb, rgba, gray
    uint32_t Levels;    // values a channel has, spread evenly from 0 to 255
    int Tolerance;
    const char* Arguments; // what makes the program write this kind
    std::string Target;    // prefix and extension of the file
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
    {"rgb", 256, 6, "-quality 100 -sampling-factor 4:4:4 -colorspace CMYK", "jpg", RGB, false},
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

} // namespace

TEST(ForeignImages, EveryKindGivesTheKnownPixels)
{
    const CTempFolder Folder;
    const CLogCatcher Log;
    for (const SForeign& Kind : Kinds)
    {
        SCOPED_TRACE(Kind.Source + " " + std::to_string(Kind.Levels) + " " + Kind.Arguments + " " +
                     Kind.Target);
        const Bytes Source = MakeSource(Kind);
        WriteFile(Folder.Path("raw"), Source);
        const size_t nColon = Kind.Target.find(':') + 1;
        const std::string strPath = Folder.Path(("a." + Kind.Target.substr(nColon)).c_str());
        RunConvert("-size 13x6 -depth 8 " + Kind.Source + ":" + Folder.Path("raw") + " " +
                   Kind.Arguments + " " + Kind.Target.substr(0, nColon) + strPath);
        const ImagePtr pImage = LoadImage(strPath);
        ASSERT_TRUE(pImage) << Log.GetText();
        const PalettePtr pPalette = LoadPalette(strPath);
        EXPECT_EQ(pPalette != nullptr, Kind.Palette);
        EXPECT_EQ(pImage->GetFormat(), Kind.Format);
        EXPECT_EQ(pImage->GetWidth(), WIDTH);
        const EImageFormat Formats[] = {INDEXED, INDEXED, INDEXED, RGB, RGBA};
        const Bytes Expected =
            GetRgba(MakeImage(WIDTH, HEIGHT, Formats[CountChannels(Kind.Source)], Source).get());
        const Bytes Rgba = GetRgba(pImage.get(), pPalette.get());
        ASSERT_EQ(Rgba.size(), Expected.size());
        for (size_t i = 0; i < Rgba.size(); ++i)
        {
            ASSERT_NEAR(Rgba[i], Expected[i], Kind.Tolerance) << i;
        }
    }
    EXPECT_EQ(Log.GetText(), "");
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
