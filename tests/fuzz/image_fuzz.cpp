#include "engine/imaging/ImageCodecs.h"

#include <cstdlib>

namespace
{

// What a decoder gives must be a whole image, and each pixel of it readable.
void CheckPicture(const SPicture& Picture)
{
    if (!Picture.pImage || Picture.pImage->GetRawData() == nullptr)
    {
        std::abort();
    }
    const uint8_t* pPixels = Picture.pImage->GetRawData();
    volatile uint32_t uSum = 0;
    for (size_t i = 0; i < Picture.pImage->GetByteCount(); ++i)
    {
        uSum = uSum + pPixels[i];
    }
    if (Picture.pPalette && Picture.pPalette->GetEntry(Picture.pPalette->GetCount() - 1) == nullptr)
    {
        std::abort();
    }
}

} // namespace

// The first byte chooses the decoder, so that each sees bytes that do not carry its mark too.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nBytes)
{
    if (nBytes == 0)
    {
        return 0;
    }
    constexpr EImageFile Files[] = {
        EImageFile::Png, EImageFile::Jpeg, EImageFile::Tga, EImageFile::Bmp, EImageFile::Dds};
    const EImageFile eFile = Files[pData[0] % std::size(Files)];
    const std::span<const uint8_t> Data(pData + 1, nBytes - 1);
    SPicture Picture;
    std::string strFault;
    if (DecodeImage(eFile, Data, Picture, strFault))
    {
        CheckPicture(Picture);
    }
    else if (strFault.empty() || strFault.find('\n') != std::string::npos)
    {
        std::abort();
    }
    return 0;
}
