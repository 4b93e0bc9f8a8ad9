#include "engine/world/CTexture.h"

#include <algorithm>
#include <array>
#include <utility>

namespace
{

uint32_t g_AliveCount = 0;
uint32_t g_LastRevision = 0;

// The luminance of up to 256 colours, by the rule of the image library.
std::array<uint8_t, 256> MakeLuminances(const IPalette& palette)
{
    std::array<uint8_t, 768> colors{}; // three bytes an entry
    for (uint32_t i = 0; i < palette.GetCount() && i < 256; ++i)
    {
        const uint8_t* pEntry = palette.GetEntry(i);
        std::copy_n(pEntry, 3, colors.data() + size_t{3} * i);
    }
    std::array<uint8_t, 256> luminances{};
    const std::unique_ptr<IImage> pColors(
        IL_CreateImageFromBufferFormat(256, 1, EImageFormat::Rgb24, colors.data()));
    const std::unique_ptr<IImage> pGrey(
        IL_CreateImageFromImage(pColors.get(), EImageFormat::Indexed8));
    if (pGrey != nullptr)
    {
        std::copy_n(std::as_const(*pGrey).GetRawData(), luminances.size(), luminances.data());
    }
    return luminances;
}

} // namespace

CTexture::CTexture(std::string strName,
                   std::unique_ptr<IImage> pImage,
                   std::unique_ptr<IPalette> pPalette)
    : m_Name(std::move(strName))
    , m_Image(std::move(pImage))
    , m_Palette(std::move(pPalette))
    , m_Revision(++g_LastRevision)
{
    ++g_AliveCount;
}

CTexture::~CTexture()
{
    --g_AliveCount;
}

const uint8_t* CTexture::LockBytes()
{
    // Stored grey is handed out as it lies; all else is turned into grey once, until the next
    // Replace.
    const bool bStoredGrey = m_Image->GetFormat() == EImageFormat::Indexed8 && m_Palette == nullptr;
    if (std::as_const(*m_Image).GetRawData() == nullptr ||
        (!bStoredGrey && m_Grey.empty() && !MakeGrey()))
    {
        return nullptr;
    }
    return bStoredGrey ? std::as_const(*m_Image).GetRawData() : m_Grey.data();
}

float CTexture::GetXSize(float fLength, int iRepeats) const
{
    return iRepeats > 0 ? fLength / static_cast<float>(iRepeats) : 0.0F;
}

void CTexture::Replace(std::unique_ptr<IImage> pImage, std::unique_ptr<IPalette> pPalette)
{
    m_Image = std::move(pImage);
    m_Palette = std::move(pPalette);
    m_Grey = {};
    m_Revision = ++g_LastRevision;
}

uint32_t CTexture::GetAliveCount()
{
    return g_AliveCount;
}

bool CTexture::MakeGrey()
{
    const size_t nTexels = static_cast<size_t>(GetWidth()) * GetHeight();
    if (m_Image->GetFormat() == EImageFormat::Indexed8)
    {
        // The luminance of each entry is found once and looked up for each texel.
        const std::array<uint8_t, 256> luminances = MakeLuminances(*m_Palette);
        const uint8_t* pIndices = std::as_const(*m_Image).GetRawData();
        m_Grey.resize(nTexels);
        std::transform(pIndices,
                       pIndices + nTexels,
                       m_Grey.begin(),
                       [&luminances](uint8_t uIndex) { return luminances[uIndex]; });
        return true;
    }
    const std::unique_ptr<IImage> pGrey(
        IL_CreateImageFromImage(m_Image.get(), EImageFormat::Indexed8));
    if (pGrey == nullptr)
    {
        return false;
    }
    const uint8_t* pBytes = std::as_const(*pGrey).GetRawData();
    m_Grey.assign(pBytes, pBytes + nTexels);
    return true;
}
