#include "engine/imaging/PngWriter.h"

#include "engine/imaging/ImageCodecs.h"
#include "host/Progress.h"

#include <png.h>

#include <bit>
#include <csetjmp>
#include <cstdio>

namespace
{

constexpr char TASK[] = "Writing the picture"; // as progress shows it
constexpr size_t ROWS_A_REPORT = 128;
// Above this level the time doubles and pictures of terrains shrink by a few percent only.
constexpr int COMPRESSION_LEVEL = 4;

struct SPngWrite
{
    png_structp pPng = nullptr;
    png_infop pInfo = nullptr;
    const SPngPixels* pPixels = nullptr;
    std::vector<uint8_t>* pOut = nullptr;
    char szFault[160] = {};

    ~SPngWrite() { png_destroy_write_struct(&pPng, &pInfo); }
};

// The error jumps over this frame, so nothing with a destructor may live here.
void OnWrite(png_structp pPng, png_bytep pData, size_t nBytes)
{
    if (!AppendBytes(*static_cast<SPngWrite*>(png_get_io_ptr(pPng))->pOut, pData, nBytes))
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
    std::snprintf(pWrite->szFault, sizeof(pWrite->szFault), "%s", pszText);
    png_longjmp(pPng, 1);
}

void OnWarning(png_structp /*pPng*/, png_const_charp /*pszText*/)
{
}

void WriteSteps(SPngWrite& write)
{
    const SPngPixels& pixels = *write.pPixels;
    png_set_write_fn(write.pPng, &write, OnWrite, OnFlush);
    png_set_compression_level(write.pPng, COMPRESSION_LEVEL);
    png_set_IHDR(write.pPng,
                 write.pInfo,
                 pixels.uWidth,
                 pixels.uHeight,
                 pixels.iBitDepth,
                 pixels.iColorType,
                 PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!pixels.paletteColors.empty())
    {
        png_set_PLTE(write.pPng,
                     write.pInfo,
                     reinterpret_cast<png_const_colorp>(pixels.paletteColors.data()),
                     static_cast<int>(pixels.paletteColors.size() / 3));
    }
    png_write_info(write.pPng, write.pInfo);
    if (pixels.iBitDepth == 16 && std::endian::native == std::endian::little)
    {
        png_set_swap(write.pPng);
    }
    for (size_t iRow = 0; iRow < pixels.uHeight; ++iRow)
    {
        if (iRow % ROWS_A_REPORT == 0 &&
            !ReportProgress(TASK, static_cast<float>(iRow) / static_cast<float>(pixels.uHeight)))
        {
            png_error(write.pPng, "cancelled");
        }
        png_write_row(write.pPng, pixels.pRows + iRow * pixels.nRowBytes);
    }
    png_write_end(write.pPng, write.pInfo);
}

bool RunGuarded(SPngWrite& write)
{
    // A fault jumps back to here; what has a destructor lives in the caller, whose frame stays.
    if (setjmp(png_jmpbuf(write.pPng)) != 0)
    {
        // After a fault too, so that whoever shows the progress puts it away.
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
    write.pPixels = &pixels;
    write.pOut = &out;
    write.pPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, &write, OnError, OnWarning);
    write.pInfo = write.pPng != nullptr ? png_create_info_struct(write.pPng) : nullptr;
    if (write.pInfo == nullptr)
    {
        strFault = "not enough memory";
        return false;
    }
    if (!RunGuarded(write))
    {
        strFault = write.szFault;
        return false;
    }
    return true;
}
