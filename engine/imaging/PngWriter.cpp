#include "engine/imaging/PngWriter.h"

#include "engine/imaging/ImageCodecs.h"
#include "host/Progress.h"

#include <png.h>

#include <bit>
#include <csetjmp>
#include <cstdio>

namespace
{

// Above this level the time doubles and pictures of terrains shrink by a few percent only.
constexpr char TASK[] = "Writing the picture"; // as progress shows it
constexpr size_t ROWS_A_REPORT = 128;
constexpr int COMPRESSION_LEVEL = 4;

struct SPngWrite
{
    png_structp Png = nullptr;
    png_infop Info = nullptr;
    const SPngPixels* Pixels = nullptr;
    std::vector<uint8_t>* Out = nullptr;
    char Fault[160] = {};

    ~SPngWrite() { png_destroy_write_struct(&Png, &Info); }
};

// The error jumps over this frame, so nothing with a destructor may live here.
void OnWrite(png_structp pPng, png_bytep pData, size_t nBytes)
{
    if (!AppendBytes(*static_cast<SPngWrite*>(png_get_io_ptr(pPng))->Out, pData, nBytes))
    {
        png_error(pPng, "not enough memory");
    }
}

void OnFlush(png_structp /*pPng*/)
{
}

[[noreturn]] void OnError(png_structp pPng, png_const_charp pszText)
{
    auto* pWrite = static_cast<SPngWrite*>(png_get_error_ptr(pPng));
    std::snprintf(pWrite->Fault, sizeof(pWrite->Fault), "%s", pszText);
    png_longjmp(pPng, 1);
}

void OnWarning(png_structp /*pPng*/, png_const_charp /*pszText*/)
{
}

void WriteSteps(SPngWrite& Write)
{
    const SPngPixels& Pixels = *Write.Pixels;
    png_set_write_fn(Write.Png, &Write, OnWrite, OnFlush);
    png_set_compression_level(Write.Png, COMPRESSION_LEVEL);
    png_set_IHDR(Write.Png,
                 Write.Info,
                 Pixels.Width,
                 Pixels.Height,
                 Pixels.BitDepth,
                 Pixels.ColorType,
                 PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!Pixels.PaletteColors.empty())
    {
        png_set_PLTE(Write.Png,
                     Write.Info,
                     reinterpret_cast<png_const_colorp>(Pixels.PaletteColors.data()),
                     static_cast<int>(Pixels.PaletteColors.size() / 3));
    }
    png_write_info(Write.Png, Write.Info);
    if (Pixels.BitDepth == 16 && std::endian::native == std::endian::little)
    {
        png_set_swap(Write.Png);
    }
    for (size_t iRow = 0; iRow < Pixels.Height; ++iRow)
    {
        if (iRow % ROWS_A_REPORT == 0 &&
            !ReportProgress(TASK, static_cast<float>(iRow) / static_cast<float>(Pixels.Height)))
        {
            png_error(Write.Png, "cancelled");
        }
        png_write_row(Write.Png, Pixels.Rows + iRow * Pixels.RowBytes);
    }
    png_write_end(Write.Png, Write.Info);
}

bool RunGuarded(SPngWrite& Write)
{
    if (setjmp(png_jmpbuf(Write.Png)) != 0)
    {
        ReportProgress(TASK, 1.0F);
        return false;
    }
    WriteSteps(Write);
    ReportProgress(TASK, 1.0F);
    return true;
}

} // namespace

bool WritePng(const SPngPixels& Pixels, std::vector<uint8_t>& Out, std::string& strFault)
{
    SPngWrite Write;
    Write.Pixels = &Pixels;
    Write.Out = &Out;
    Write.Png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &Write, OnError, OnWarning);
    Write.Info = Write.Png != nullptr ? png_create_info_struct(Write.Png) : nullptr;
    if (Write.Info == nullptr)
    {
        strFault = "not enough memory";
        return false;
    }
    if (!RunGuarded(Write))
    {
        strFault = Write.Fault;
        return false;
    }
    return true;
}
