#include "engine/imaging/CodecTable.h"
#include "engine/imaging/ImageCodecs.h"
#include "tests/fuzz/Seeds.h"

#include <algorithm>
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

// With "--seeds FOLDER" a small picture of each format that can be written is put there.
extern "C" int LLVMFuzzerInitialize(int* pArgumentCount, char*** pArguments)
{
    if (const char* pszFolder = FindSeedFolder(*pArgumentCount, *pArguments))
    {
        const std::unique_ptr<CImage> pImage = CImage::Create(4, 3, EImageFormat::Rgb24);
        std::fill_n(pImage->GetRawData(), pImage->GetByteCount(), uint8_t{0x5A});
        char cFirst = 0;
        for (const SImageCodec& Codec : GetImageCodecs())
        {
            std::vector<uint8_t> File;
            std::string strFault;
            if (Codec.pEncode != nullptr && Codec.pEncode(*pImage, nullptr, File, strFault))
            {
                WriteSeed(std::string(pszFolder) + "/" + Codec.extensions[0], {cFirst}, File);
            }
            ++cFirst;
        }
        std::exit(0);
    }
    return 0;
}

// The first byte chooses the decoder, so that each sees bytes that do not carry its mark too.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nBytes)
{
    if (nBytes == 0)
    {
        return 0;
    }
    const std::span<const SImageCodec> Codecs = GetImageCodecs();
    const SImageCodec& Codec = Codecs[pData[0] % Codecs.size()];
    const std::span<const uint8_t> Data(pData + 1, nBytes - 1);
    if (Codec.pMayHavePalette != nullptr)
    {
        Codec.pMayHavePalette(Data);
    }
    SPicture Picture;
    std::string strFault;
    if (Codec.pDecode(Data, Picture, strFault))
    {
        CheckPicture(Picture);
    }
    else if (strFault.empty() || strFault.find('\n') != std::string::npos)
    {
        std::abort();
    }
    return 0;
}
