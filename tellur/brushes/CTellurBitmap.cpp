#include "tellur/brushes/CTellurBitmap.h"

#include "host/FileSystem.h"
#include "host/Image.h"
#include "host/Log.h"
#include "parser/KeywordValues.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

constexpr size_t MAX_PATH_BYTES = 260; // of a path in a brush block, terminator included

// Escapes a path for a quoted string: a run of an odd number of backslashes gets one more where
// another character follows, so single separators double and doubled ones stay.
std::string EscapePath(const std::string& strPath)
{
    std::string strEscaped;
    size_t nRun = 0;
    for (const char c : strPath)
    {
        if (c != '\\' && nRun % 2 == 1)
        {
            strEscaped += '\\';
        }
        nRun = c == '\\' ? nRun + 1 : 0;
        strEscaped += c;
    }
    return strEscaped;
}

} // namespace

CTellurBitmap::CTellurBitmap() = default;
CTellurBitmap::~CTellurBitmap() = default;

const char* CTellurBitmap::GetPath() const
{
    return m_Path ? m_Path->c_str() : nullptr;
}

bool CTellurBitmap::Load(const char* pszFilePath)
{
    if (pszFilePath == nullptr)
    {
        CrashLog("[CTellurBitmap::Load] pszFilePath == NULL\n");
        return false;
    }
    const std::string strPath = pszFilePath; // the caller may pass our own path
    m_Image.reset();
    m_Path.reset();
    std::unique_ptr<IImage> pImage(IL_LoadImage(strPath.c_str()));
    if (pImage == nullptr)
    {
        CrashLog("[CTellurBitmap::Load] unable to load bitmap file %s\n", strPath.c_str());
        return false;
    }
    if (!PrepareImage(std::move(pImage)))
    {
        CrashLog("[CTellurBitmap::Load] failed to prepare image\n");
        return false;
    }
    m_Path = strPath;
    return true;
}

bool CTellurBitmap::PrepareImage(std::unique_ptr<IImage> pSource)
{
    if (pSource == nullptr)
    {
        CrashLog("[CTellurBitmap::PrepareImage] pSrcImage == NULL\n");
        return false;
    }
    const uint32_t uWidth = pSource->GetWidth();
    const uint32_t uHeight = pSource->GetHeight();
    if (uWidth == uHeight && pSource->GetBitsPerPixel() == 8)
    {
        m_Image = std::move(pSource);
        return true;
    }
    const uint8_t* pPixels = std::as_const(*pSource).GetRawData();
    if (pPixels == nullptr)
    {
        CrashLog("[CTellurBitmap::PrepareImage] pSrcImage->GetRawData() == NULL\n");
        return false;
    }
    // Kept as it always was: the first channel counts, no luminance is taken, and rows of a picture
    // that is not square are read with the square's row length.
    const uint32_t uSide = std::min(uWidth, uHeight);
    const size_t nBytesPerPixel = pSource->GetBitsPerPixel() / 8;
    std::vector<uint8_t> square(static_cast<size_t>(uSide) * uSide);
    for (size_t k = 0; k < square.size(); ++k)
    {
        square[k] = pPixels[k * nBytesPerPixel];
    }
    m_Image.reset(IL_CreateImageFromBufferBPP(uSide, uSide, 8, square.data()));
    return m_Image != nullptr;
}

int CTellurBitmap::GetXSize() const
{
    if (m_Image == nullptr)
    {
        CrashLog("[CTellurBitmap::GetXSize()] no current image\n");
        return 0;
    }
    return static_cast<int>(m_Image->GetWidth());
}

int CTellurBitmap::GetYSize() const
{
    if (m_Image == nullptr)
    {
        CrashLog("[CTellurBitmap::GetXSize()] no current image\n"); // the same text, always so
        return 0;
    }
    return static_cast<int>(m_Image->GetHeight());
}

CTellurBitmap* CTellurBitmap::Clone() const
{
    auto pClone = std::make_unique<CTellurBitmap>();
    pClone->m_Path = m_Path;
    if (m_Image != nullptr)
    {
        pClone->m_Image.reset(IL_CreateImageFromImage(m_Image.get()));
    }
    return pClone.release();
}

uint8_t CTellurBitmap::GetPoint(int iX, int iY) const
{
    if (m_Image == nullptr)
    {
        CrashLog("[CTellurBitmap::GetPoint] no current image\n");
        return 0;
    }
    const uint8_t* pPixels = std::as_const(*m_Image).GetRawData();
    if (pPixels == nullptr)
    {
        CrashLog("[CTellurBitmap::GetPoint] no current image data\n");
        return 0;
    }
    return pPixels[iX + static_cast<ptrdiff_t>(GetXSize()) * iY];
}

IImage* CTellurBitmap::GetImage()
{
    return m_Image.get();
}

const IImage* CTellurBitmap::GetImage() const
{
    return m_Image.get();
}

bool CTellurBitmap::Save(fs::ifile& file, int iIndent) const
{
    if (!m_Path)
    {
        CrashLog("[CTellurBitmap::Save] no bitmap file path\n");
        return false;
    }
    file.printf("%*spath( \"%s\" )\n", iIndent, "", EscapePath(*m_Path).c_str());
    return true;
}

bool CTellurBitmap::LoadIni(const CTCPARSE_KEYWORD* pBlock)
{
    if (pBlock == nullptr)
    {
        CrashLog("[CTellurBitmap::LoadIni] no key\n");
        return false;
    }
    std::string strPath;
    for (const CTCPARSE_KEYWORD* pKey = pBlock; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, "path"))
        {
            const char* pszPath = GetStringValue(pKey->params);
            strPath = pszPath != nullptr ? pszPath : "";
            strPath.resize(std::min(strPath.size(), MAX_PATH_BYTES - 1));
        }
    }
    return strPath.empty() || Load(strPath.c_str());
}
