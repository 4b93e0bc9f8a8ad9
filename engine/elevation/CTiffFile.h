#pragma once

#include <tiffio.h>

#include <cstdint>
#include <span>
#include <string>

constexpr uint32_t TAG_PIXEL_SCALE = 33550; // spacing along x, y and z; libtiff has no name for it

// A TIFF file in memory, open in libtiff for reading. The first fault is kept as text instead of
// going to stderr; warnings are dropped. Lives as long as one decode.
class CTiffFile
{
public:
    // bytes: borrowed until the object is gone. nMaxBlock: no single block that libtiff allocates
    // is larger, in bytes.
    CTiffFile(std::span<const uint8_t> bytes, uint64_t nMaxBlock);
    ~CTiffFile();
    CTiffFile(const CTiffFile&) = delete;
    CTiffFile& operator=(const CTiffFile&) = delete;

    // Reads the first directory. False leaves a fault.
    bool Open();

    TIFF* Get() const { return m_Tiff; }

    // The values of a tag that libtiff knows nothing of, borrowed until the object is gone; empty
    // when it is absent or of another type. T must be the type that eType means.
    template <class T> std::span<const T> GetArray(uint32_t uTag, TIFFDataType eType) const
    {
        const auto [pData, nCount] = FindArray(uTag, eType);
        return {static_cast<const T*>(pData), nCount};
    }

    // Keeps the fault, unless there is an earlier one, which libtiff may have told. Always false.
    bool Fail(const std::string& strFault);

    // One phrase without a line feed.
    const std::string& GetFault() const { return m_Fault; }

private:
    struct SArray
    {
        const void* pData;
        size_t nCount;
    };

    SArray FindArray(uint32_t uTag, TIFFDataType eType) const;
    static tmsize_t OnRead(thandle_t pFile, void* pDest, tmsize_t nBytes);
    static tmsize_t OnWrite(thandle_t pFile, void* pSource, tmsize_t nBytes);
    static toff_t OnSeek(thandle_t pFile, toff_t nOffset, int iWhence);
    static int OnClose(thandle_t pFile);
    static toff_t OnSize(thandle_t pFile);
    static int OnError(TIFF* pTiff, void* pFile, const char* pszModule, const char*, va_list);
    static int OnWarning(TIFF* pTiff, void* pFile, const char* pszModule, const char*, va_list);

    std::span<const uint8_t> m_Bytes;
    uint64_t m_Position = 0;
    uint64_t m_MaxBlock;
    TIFF* m_Tiff = nullptr;
    std::string m_Fault;
};
