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

void WriteSteps(SPngWrite& write)
{
    const SPngPixels& pixels = *write.Pixels;
    png_set_write_fn(write.Png, &write, OnWrite, OnFlush);
    png_set_compression_level(write.Png, COMPRESSION_LEVEL);
    png_set_IHDR(write.Png,
                 write.Info,
                 pixels.Width,
                 pixels.Height,
                 pixels.BitDepth,
                 pixels.ColorType,
                 PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!pixels.PaletteColors.empty())
    {
        png_set_PLTE(write.Png,
                     write.Info,
                     reinterpret_cast<png_const_colorp>(pixels.PaletteColors.data()),
                     static_cast<int>(pixels.PaletteColors.size() / 3));
    }
    png_write_info(write.Png, write.Info);
    if (pixels.BitDepth == 16 && std::endian::native == std::endian::little)
    {
        png_set_swap(write.Png);
    }
    for (size_t iRow = 0; iRow < pixels.Height; ++iRow)
    {
        if (iRow % ROWS_A_REPORT == 0 &&
            !ReportProgress(TASK, static_cast<float>(iRow) / static_cast<float>(pixels.Height)))
        {
            png_error(write.Png, "cancelled");
        }
        png_write_row(write.Png, pixels.Rows + iRow * pixels.RowBytes);
    }
    png_write_end(write.Png, write.Info);
}

bool RunGuarded(SPngWrite& write)
{
    if (setjmp(png_jmpbuf(write.Png)) != 0)
    {
        ReportProgress(TASK, 1.0F);
        return false;
    }
    WriteSteps(write);
    ReportProgress(TASK, 1.0F);
    return true;
}

} // namespace

bool WritePng(const SPngPixels& pixels, std::vector<uint8_t>& out, std::string& strFault)
{
    SPngWrite write;
    write.Pixels = &pixels;
    write.Out = &out;
    write.Png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &write, OnError, OnWarning);
    write.Info = write.Png != nullptr ? png_create_info_struct(write.Png) : nullptr;
    if (write.Info == nullptr)
    {
        strFault = "not enough memory";
        return false;
    }
    if (!RunGuarded(write))
    {
        strFault = write.Fault;
        return false;
    }
    return true;
}
