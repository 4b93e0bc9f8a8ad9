#include "engine/imaging/BmpHeader.h"
#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

namespace
{

constexpr uint32_t FILE_HEADER_BYTES = 14;
constexpr uint32_t PLAIN_HEADER_BYTES = 40;
constexpr uint32_t ALPHA_HEADER_BYTES = 108; // the header that says where the alpha bits are
constexpr uint32_t PIXELS_PER_METRE = 2835;  // 72 dots an inch

void AppendColors(std::vector<uint8_t>& Out, const IPalette* pPalette)
{
    // Grey has no kind of its own: its palette is the ramp.
    const uint32_t uCount = pPalette != nullptr ? pPalette->GetCount() : 256;
    for (uint32_t uEntry = 0; uEntry < uCount; ++uEntry)
    {
        const auto uGrey = static_cast<uint8_t>(uEntry);
        const uint8_t Grey[3] = {uGrey, uGrey, uGrey};
        const uint8_t* pColor = pPalette != nullptr ? pPalette->GetEntry(uEntry) : Grey;
        const uint8_t Entry[4] = {pColor[2], pColor[1], pColor[0], 0};
        Out.insert(Out.end(), Entry, Entry + 4);
    }
}

void AppendAlphaHeader(std::vector<uint8_t>& Out, size_t nHeaderStart)
{
    AppendLe32(Out, 0x00FF0000);
    AppendLe32(Out, 0x0000FF00);
    AppendLe32(Out, 0x000000FF);
    AppendLe32(Out, 0xFF000000);
    AppendLe32(Out, 0x73524742); // "sRGB"; end points and gammas stay 0
    Out.resize(nHeaderStart + ALPHA_HEADER_BYTES);
}

} // namespace

void EncodeBmp(const IImage& Image, const IPalette* pPalette, std::vector<uint8_t>& Out)
{
    const uint32_t uPixelBytes = Image.GetBitsPerPixel() / 8;
    const bool bAlpha = uPixelBytes == 4;
    const bool bPalette = uPixelBytes == 1;
    const uint32_t uColors = pPalette != nullptr ? pPalette->GetCount() : 256;
    const size_t nSourceRow = size_t{Image.GetWidth()} * uPixelBytes;
    const size_t nFileRow = (nSourceRow + 3) / 4 * 4;
    const auto uPixels = static_cast<uint32_t>(nFileRow * Image.GetHeight());
    const uint32_t uStart = FILE_HEADER_BYTES + (bAlpha ? ALPHA_HEADER_BYTES : PLAIN_HEADER_BYTES) +
                            (bPalette ? uColors * 4 : 0);

    Out.reserve(Out.size() + uStart + uPixels);
    Out.push_back('B');
    Out.push_back('M');
    AppendLe32(Out, uStart + uPixels);
    AppendLe32(Out, 0);
    AppendLe32(Out, uStart);

    const size_t nHeaderStart = Out.size();
    AppendLe32(Out, bAlpha ? ALPHA_HEADER_BYTES : PLAIN_HEADER_BYTES);
    AppendLe32(Out, Image.GetWidth());
    AppendLe32(Out, Image.GetHeight());
    AppendLe16(Out, 1); // planes
    AppendLe16(Out, uPixelBytes * 8);
    AppendLe32(Out, bAlpha ? BMP_MASKS : BMP_PLAIN);
    AppendLe32(Out, uPixels);
    AppendLe32(Out, PIXELS_PER_METRE);
    AppendLe32(Out, PIXELS_PER_METRE);
    AppendLe32(Out, bPalette ? uColors : 0);
    AppendLe32(Out, 0);
    if (bAlpha)
    {
        AppendAlphaHeader(Out, nHeaderStart);
    }
    if (bPalette)
    {
        AppendColors(Out, pPalette);
    }

    size_t nPosition = Out.size();
    Out.resize(nPosition + uPixels);
    for (uint32_t uRow = Image.GetHeight(); uRow-- > 0; nPosition += nFileRow)
    {
        CopySwapped(Image.GetRawData() + nSourceRow * uRow,
                    Out.data() + nPosition,
                    Image.GetWidth(),
                    uPixelBytes);
    }
}
