#include "engine/imaging/CPngReader.h"

#include "engine/imaging/CImage.h"
#include "host/Progress.h"

#include <bit>
#include <csetjmp>
#include <cstdio>
#include <cstring>

namespace
{

constexpr char TASK[] = "Reading the picture"; // as progress shows it
constexpr size_t ROWS_A_REPORT = 128;
// Deflate cannot pack more than this many bytes into one.
constexpr uint64_t MAX_DEFLATE_RATIO = 1032;

static_assert(sizeof(png_color) == 3, "a palette is read as bytes");

} // namespace

CPngReader::CPngReader(std::span<const uint8_t> data)
    : m_Data(data)
    , m_Png(png_create_read_struct(PNG_LIBPNG_VER_STRING, this, OnError, OnWarning))
    , m_Info(m_Png != nullptr ? png_create_info_struct(m_Png) : nullptr)
{
}

CPngReader::~CPngReader()
{
    png_destroy_read_struct(&m_Png, &m_Info, nullptr);
}

void CPngReader::OnRead(png_structp pPng, png_bytep pDest, size_t nBytes)
{
    auto* pReader = static_cast<CPngReader*>(png_get_io_ptr(pPng));
    if (nBytes > pReader->m_Data.size() - pReader->m_Position)
    {
        png_error(pPng, "the file ends too early");
    }
    std::memcpy(pDest, pReader->m_Data.data() + pReader->m_Position, nBytes);
    pReader->m_Position += nBytes;
}

void CPngReader::OnError(png_structp pPng, png_const_charp pszText)
{
    auto* pReader = static_cast<CPngReader*>(png_get_error_ptr(pPng));
    // Into a buffer of the reader: a string on the way of the jump would never be destroyed.
    std::snprintf(pReader->m_Fault, sizeof(pReader->m_Fault), "%s", pszText);
    png_longjmp(pPng, 1);
}

// What libpng can live with is none of the user's business.
void CPngReader::OnWarning(png_structp /*pPng*/, png_const_charp /*pszText*/)
{
}

bool CPngReader::Guard(void (*pStep)(CPngReader&))
{
    if (m_Info == nullptr)
    {
        std::snprintf(m_Fault, sizeof(m_Fault), "not enough memory");
        return false;
    }
    // A fault jumps back to here over libpng and the step, where no destructor would run.
    if (setjmp(png_jmpbuf(m_Png)) != 0)
    {
        return false;
    }
    pStep(*this);
    return true;
}

bool CPngReader::ReadHeader()
{
    return Guard([](CPngReader& reader) { reader.ReadHeaderStep(); });
}

bool CPngReader::Prepare(ESamples eSamples)
{
    m_Samples = eSamples;
    return Guard([](CPngReader& reader) { reader.PrepareStep(); });
}

bool CPngReader::ReadPixels(uint8_t* pDest)
{
    m_Dest = pDest;
    const bool bRead = Guard([](CPngReader& reader) { reader.ReadPixelsStep(); });
    ReportProgress(TASK, 1.0F); // whoever shows it puts it away
    return bRead;
}

void CPngReader::ReadHeaderStep()
{
    png_set_read_fn(m_Png, this, OnRead);
    png_set_user_limits(m_Png, CImage::MAX_SIDE, CImage::MAX_SIDE);
    png_read_info(m_Png, m_Info);
    png_get_IHDR(
        m_Png, m_Info, &m_Width, &m_Height, &m_BitDepth, &m_ColorType, nullptr, nullptr, nullptr);
    m_HasTransparency = !IsPaletted() && ((m_ColorType & PNG_COLOR_MASK_ALPHA) != 0 ||
                                          png_get_valid(m_Png, m_Info, PNG_INFO_tRNS) != 0);
    // A size that the bytes cannot hold is refused before memory is taken for it.
    const uint64_t nPacked = uint64_t{png_get_rowbytes(m_Png, m_Info)} * m_Height;
    if (nPacked / MAX_DEFLATE_RATIO > m_Data.size())
    {
        png_error(m_Png, "the file is too short for its size in pixels");
    }
}

void CPngReader::PrepareStep()
{
    const bool bWords = m_Samples == ESamples::Words;
    if (IsPaletted())
    {
        // Indices stay indices, one a byte.
        png_set_packing(m_Png);
    }
    else
    {
        png_set_expand(m_Png); // full bytes, and alpha for a transparent colour
    }
    if (m_HasTransparency && (m_ColorType & PNG_COLOR_MASK_COLOR) == 0)
    {
        // No picture here is grey with alpha.
        png_set_gray_to_rgb(m_Png);
    }
    if (bWords)
    {
        png_set_expand_16(m_Png);
    }
    else
    {
        png_set_strip_16(m_Png);
    }
    if (bWords && std::endian::native == std::endian::little)
    {
        png_set_swap(m_Png);
    }
    png_set_interlace_handling(m_Png);
    png_read_update_info(m_Png, m_Info);
    m_Channels = png_get_channels(m_Png, m_Info);
    m_RowBytes = png_get_rowbytes(m_Png, m_Info);
    if (m_RowBytes != size_t{m_Width} * m_Channels * (bWords ? 2 : 1))
    {
        png_error(m_Png, "unexpected row length");
    }
}

void CPngReader::ReadPixelsStep()
{
    const int nPasses = png_get_interlace_type(m_Png, m_Info) == PNG_INTERLACE_NONE
                            ? 1
                            : PNG_INTERLACE_ADAM7_PASSES;
    for (int iPass = 0; iPass < nPasses; ++iPass)
    {
        for (size_t iRow = 0; iRow < m_Height; ++iRow)
        {
            const auto fDone = static_cast<float>(static_cast<size_t>(iPass) * m_Height + iRow);
            if (iRow % ROWS_A_REPORT == 0 &&
                !ReportProgress(
                    TASK, fDone / (static_cast<float>(nPasses) * static_cast<float>(m_Height))))
            {
                // Only an error leads out of libpng; the flag tells it from one of the file.
                m_bCancelled = true;
                png_error(m_Png, "cancelled");
            }
            png_read_row(m_Png, m_Dest + iRow * m_RowBytes, nullptr);
        }
    }
    png_read_end(m_Png, nullptr);
}

std::span<const uint8_t> CPngReader::GetPaletteColors() const
{
    png_colorp pColors = nullptr;
    int nColors = 0;
    if (m_Png == nullptr || png_get_PLTE(m_Png, m_Info, &pColors, &nColors) == 0)
    {
        return {};
    }
    return {reinterpret_cast<const uint8_t*>(pColors), static_cast<size_t>(nColors) * 3};
}

std::string CPngReader::GetFault() const
{
    return m_bCancelled ? "cancelled" : std::string("damaged PNG file: ") + m_Fault;
}
