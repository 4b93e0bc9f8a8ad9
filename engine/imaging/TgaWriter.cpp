#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

namespace
{

constexpr uint8_t TOP_ROW_FIRST = 0x20;

uint8_t GetKind(uint32_t uPixelBytes, bool bPalette)
{
    if (uPixelBytes != 1)
    {
        return 2;
    }
    return bPalette ? 1 : 3;
}

// Says where no further areas are and ends in the mark by which a TGA is told without its
// extension.
void AppendFooter(std::vector<uint8_t>& Out)
{
    constexpr char Mark[] = "TRUEVISION-XFILE."; // with its final NUL
    AppendLe32(Out, 0);
    AppendLe32(Out, 0);
    Out.insert(Out.end(), Mark, Mark + sizeof(Mark));
}

} // namespace

void EncodeTga(const IImage& Image, const IPalette* pPalette, std::vector<uint8_t>& Out)
{
    const uint32_t uPixelBytes = Image.GetBitsPerPixel() / 8;
    const uint32_t uEntries = pPalette != nullptr ? pPalette->GetCount() : 0;
    const size_t nPixels = size_t{Image.GetWidth()} * Image.GetHeight();
    Out.push_back(0); // no identification
    Out.push_back(pPalette != nullptr ? 1 : 0);
    Out.push_back(GetKind(uPixelBytes, pPalette != nullptr));
    AppendLe16(Out, 0);
    AppendLe16(Out, uEntries);
    Out.push_back(pPalette != nullptr ? 24 : 0);
    AppendLe32(Out, 0); // origin on a screen
    AppendLe16(Out, Image.GetWidth());
    AppendLe16(Out, Image.GetHeight());
    Out.push_back(static_cast<uint8_t>(uPixelBytes * 8));
    Out.push_back(uPixelBytes == 4 ? TOP_ROW_FIRST | 8 : TOP_ROW_FIRST);
    for (uint32_t uEntry = 0; uEntry < uEntries; ++uEntry)
    {
        const uint8_t* pColor = pPalette->GetEntry(uEntry);
        Out.insert(Out.end(), {pColor[2], pColor[1], pColor[0]});
    }
    const size_t nStart = Out.size();
    Out.resize(nStart + nPixels * uPixelBytes);
    CopySwapped(Image.GetRawData(), Out.data() + nStart, nPixels, uPixelBytes);
    AppendFooter(Out);
}
