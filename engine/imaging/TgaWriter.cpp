#include "engine/imaging/PixelOrder.h"
#include "engine/imaging/TgaCodec.h"

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
void AppendFooter(std::vector<uint8_t>& out)
{
    constexpr char MARK[] = "TRUEVISION-XFILE."; // with its final NUL
    AppendLe32(out, 0);
    AppendLe32(out, 0);
    out.insert(out.end(), MARK, MARK + sizeof(MARK));
}

} // namespace

bool EncodeTga(const IImage& image,
               const IPalette* pPalette,
               std::vector<uint8_t>& out,
               std::string& /*strFault*/)
{
    const uint32_t uPixelBytes = image.GetBitsPerPixel() / 8;
    const uint32_t uEntries = pPalette != nullptr ? pPalette->GetCount() : 0;
    const size_t nPixels = size_t{image.GetWidth()} * image.GetHeight();
    out.push_back(0); // no identification
    out.push_back(pPalette != nullptr ? 1 : 0);
    out.push_back(GetKind(uPixelBytes, pPalette != nullptr));
    AppendLe16(out, 0);
    AppendLe16(out, uEntries);
    out.push_back(pPalette != nullptr ? 24 : 0);
    AppendLe32(out, 0); // origin on a screen
    AppendLe16(out, image.GetWidth());
    AppendLe16(out, image.GetHeight());
    out.push_back(static_cast<uint8_t>(uPixelBytes * 8));
    out.push_back(uPixelBytes == 4 ? TOP_ROW_FIRST | 8 : TOP_ROW_FIRST);
    for (uint32_t uEntry = 0; uEntry < uEntries; ++uEntry)
    {
        const uint8_t* pColor = pPalette->GetEntry(uEntry);
        out.insert(out.end(), {pColor[2], pColor[1], pColor[0]});
    }
    const size_t nStart = out.size();
    out.resize(nStart + nPixels * uPixelBytes);
    CopySwapped(image.GetRawData(), out.data() + nStart, nPixels, uPixelBytes);
    AppendFooter(out);
    return true;
}
