#include "engine/imaging/BmpCodec.h"
#include "engine/imaging/BmpHeader.h"
#include "engine/imaging/PixelOrder.h"

namespace
{

constexpr uint32_t FILE_HEADER_BYTES = 14;
constexpr uint32_t PLAIN_HEADER_BYTES = 40;
constexpr uint32_t ALPHA_HEADER_BYTES = 108; // the header that says where the alpha bits are
constexpr uint32_t PIXELS_PER_METRE = 2835;  // 72 dots an inch

void AppendColors(std::vector<uint8_t>& out, const IPalette* pPalette)
{
    // Grey has no kind of its own: its palette is the ramp.
    const uint32_t uCount = pPalette != nullptr ? pPalette->GetCount() : 256;
    for (uint32_t uEntry = 0; uEntry < uCount; ++uEntry)
    {
        const auto uGrey = static_cast<uint8_t>(uEntry);
        const uint8_t grey[3] = {uGrey, uGrey, uGrey};
        const uint8_t* pColor = pPalette != nullptr ? pPalette->GetEntry(uEntry) : grey;
        const uint8_t entry[4] = {pColor[2], pColor[1], pColor[0], 0};
        out.insert(out.end(), entry, entry + 4);
    }
}

void AppendAlphaHeader(std::vector<uint8_t>& out, size_t nHeaderStart)
{
    AppendLe32(out, 0x00FF0000);
    AppendLe32(out, 0x0000FF00);
    AppendLe32(out, 0x000000FF);
    AppendLe32(out, 0xFF000000);
    AppendLe32(out, 0x73524742); // "sRGB"; end points and gammas stay 0
    out.resize(nHeaderStart + ALPHA_HEADER_BYTES);
}

} // namespace

bool EncodeBmp(const IImage& image,
               const IPalette* pPalette,
               std::vector<uint8_t>& out,
               std::string& /*strFault*/)
{
    const uint32_t uPixelBytes = image.GetBitsPerPixel() / 8;
    const bool bAlpha = uPixelBytes == 4;
    const bool bPalette = uPixelBytes == 1;
    const uint32_t uColors = pPalette != nullptr ? pPalette->GetCount() : 256;
    const size_t nSourceRow = size_t{image.GetWidth()} * uPixelBytes;
    // Rows are padded to whole words. All of them fit in 32 bits, because the size was checked.
    const size_t nFileRow = (nSourceRow + 3) / 4 * 4;
    const auto uPixels = static_cast<uint32_t>(nFileRow * image.GetHeight());
    const uint32_t uStart = FILE_HEADER_BYTES + (bAlpha ? ALPHA_HEADER_BYTES : PLAIN_HEADER_BYTES) +
                            (bPalette ? uColors * 4 : 0);

    out.reserve(out.size() + uStart + uPixels);
    out.push_back('B');
    out.push_back('M');
    AppendLe32(out, uStart + uPixels);
    AppendLe32(out, 0);
    AppendLe32(out, uStart);

    const size_t nHeaderStart = out.size();
    AppendLe32(out, bAlpha ? ALPHA_HEADER_BYTES : PLAIN_HEADER_BYTES);
    AppendLe32(out, image.GetWidth());
    AppendLe32(out, image.GetHeight());
    AppendLe16(out, 1); // planes
    AppendLe16(out, uPixelBytes * 8);
    AppendLe32(out, bAlpha ? BMP_MASKS : BMP_PLAIN);
    AppendLe32(out, uPixels);
    AppendLe32(out, PIXELS_PER_METRE);
    AppendLe32(out, PIXELS_PER_METRE);
    AppendLe32(out, bPalette ? uColors : 0);
    AppendLe32(out, 0);
    if (bAlpha)
    {
        AppendAlphaHeader(out, nHeaderStart);
    }
    if (bPalette)
    {
        AppendColors(out, pPalette);
    }

    size_t nPosition = out.size();
    out.resize(nPosition + uPixels);
    for (uint32_t uRow = image.GetHeight(); uRow-- > 0; nPosition += nFileRow)
    {
        CopySwapped(image.GetRawData() + nSourceRow * uRow,
                    out.data() + nPosition,
                    image.GetWidth(),
                    uPixelBytes);
    }
    return true;
}
