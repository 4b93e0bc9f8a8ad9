#include "engine/elevation/CTiffFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

CTiffFile::CTiffFile(std::span<const uint8_t> bytes, uint64_t nMaxBlock)
    : m_Bytes(bytes)
    , m_MaxBlock(nMaxBlock)
{
}

CTiffFile::~CTiffFile()
{
    if (m_Tiff != nullptr)
    {
        TIFFClose(m_Tiff);
    }
}

bool CTiffFile::Open()
{
    constexpr auto MAX_BLOCK = static_cast<uint64_t>(std::numeric_limits<tmsize_t>::max());
    TIFFOpenOptions* const pOptions = TIFFOpenOptionsAlloc();
    if (pOptions == nullptr)
    {
        return Fail("not enough memory");
    }
    // A damaged file may claim any size: libtiff then fails instead of taking that memory.
    TIFFOpenOptionsSetMaxSingleMemAlloc(pOptions,
                                        static_cast<tmsize_t>(std::min(m_MaxBlock, MAX_BLOCK)));
    TIFFOpenOptionsSetErrorHandlerExtR(pOptions, OnError, this);
    TIFFOpenOptionsSetWarningHandlerExtR(pOptions, OnWarning, this);
    // "m": libtiff would not check each access to mapped memory.
    m_Tiff = TIFFClientOpenExt(
        "", "rm", this, OnRead, OnWrite, OnSeek, OnClose, OnSize, nullptr, nullptr, pOptions);
    TIFFOpenOptionsFree(pOptions);
    return m_Tiff != nullptr || Fail("not a TIFF file");
}

CTiffFile::SArray CTiffFile::FindArray(uint32_t uTag, TIFFDataType eType) const
{
    const TIFFField* const pField = TIFFFindField(m_Tiff, uTag, TIFF_ANY);
    uint32_t uCount = 0;
    void* pData = nullptr;
    // Only a tag that libtiff met in this file and does not know hands out a 32-bit count and
    // values in the type of the file.
    if (pField == nullptr || TIFFFieldDataType(pField) != eType ||
        TIFFFieldPassCount(pField) == 0 || TIFFFieldReadCount(pField) != TIFF_VARIABLE2 ||
        TIFFGetField(m_Tiff, uTag, &uCount, &pData) == 0 || pData == nullptr)
    {
        return {nullptr, 0};
    }
    return {pData, uCount};
}

bool CTiffFile::Fail(const std::string& strFault)
{
    if (m_Fault.empty())
    {
        m_Fault = strFault;
    }
    return false;
}

tmsize_t CTiffFile::OnRead(thandle_t pFile, void* pDest, tmsize_t nBytes)
{
    auto& file = *static_cast<CTiffFile*>(pFile);
    const uint64_t nLeft = file.m_Bytes.size() - std::min(file.m_Position, OnSize(pFile));
    const size_t nRead = std::min(nLeft, static_cast<uint64_t>(std::max<tmsize_t>(nBytes, 0)));
    if (nRead > 0)
    {
        std::memcpy(pDest, file.m_Bytes.data() + file.m_Position, nRead);
    }
    file.m_Position += nRead;
    return static_cast<tmsize_t>(nRead);
}

tmsize_t CTiffFile::OnWrite(thandle_t /*pFile*/, void* /*pSource*/, tmsize_t /*nBytes*/)
{
    return 0;
}

toff_t CTiffFile::OnSeek(thandle_t pFile, toff_t nOffset, int iWhence)
{
    auto& file = *static_cast<CTiffFile*>(pFile);
    const uint64_t nBase = iWhence == SEEK_SET   ? 0
                           : iWhence == SEEK_CUR ? file.m_Position
                                                 : file.m_Bytes.size();
    // May lie behind the end; OnRead then finds nothing left.
    file.m_Position = nBase + nOffset;
    return file.m_Position;
}

int CTiffFile::OnClose(thandle_t /*pFile*/)
{
    return 0;
}

toff_t CTiffFile::OnSize(thandle_t pFile)
{
    return static_cast<CTiffFile*>(pFile)->m_Bytes.size();
}

int CTiffFile::OnError(TIFF* /*pTiff*/,
                       void* pFile,
                       const char* /*pszModule*/,
                       const char* pszFormat,
                       va_list arguments)
{
    char szText[200] = {};
    std::vsnprintf(szText, sizeof(szText), pszFormat, arguments);
    std::string strText(szText);
    for (char& c : strText)
    {
        c = c >= ' ' && c <= '~' ? c : ' '; // names of tags come out of the file
    }
    while (!strText.empty() && (strText.back() == '.' || strText.back() == ' '))
    {
        strText.pop_back();
    }
    static_cast<CTiffFile*>(pFile)->Fail("damaged TIFF file: " + strText);
    return 1; // handled, nothing goes to the process's own handler
}

int CTiffFile::OnWarning(TIFF* /*pTiff*/,
                         void* /*pFile*/,
                         const char* /*pszModule*/,
                         const char* /*pszFormat*/,
                         va_list /*arguments*/)
{
    return 1;
}
