#pragma once

#include "engine/imaging/JpegErrors.h"

#include <cstdint>
#include <span>

// Reads one JPEG from memory; lives as long as that read. Every step that calls libjpeg runs
// through Guard and keeps nothing with a destructor on its stack.
class CJpegReader
{
public:
    // data: borrowed until the reader is gone.
    explicit CJpegReader(std::span<const uint8_t> data);
    ~CJpegReader();
    CJpegReader(const CJpegReader&) = delete;
    CJpegReader& operator=(const CJpegReader&) = delete;

    // These two are called in this order, each once; false leaves a fault, which ends the read.
    // ReadHeader takes everything before the pixels, ReadPixels the rest of the file, to its end
    // mark. pDest: rows without padding, a byte a pixel for grey, else red, green and blue.
    bool ReadHeader();
    bool ReadPixels(uint8_t* pDest);

    // What the header says, also one that was refused for its size.
    uint32_t GetWidth() const { return m_Info.image_width; }

    uint32_t GetHeight() const { return m_Info.image_height; }

    bool IsRefusedForSize() const;

    bool IsGrey() const { return m_Info.out_color_space == JCS_GRAYSCALE; }

    std::string GetFault() const { return m_Errors.GetFault(); }

private:
    bool Guard(void (*pStep)(CJpegReader&));
    void ReadHeaderStep();
    void ReadPixelsStep();
    void ReadInkRow(uint8_t* pInks, uint8_t* pDest);
    static void OnSkip(j_decompress_ptr pInfo, long nBytes);
    static boolean OnEmpty(j_decompress_ptr pInfo);

    SJpegErrors m_Errors;
    jpeg_source_mgr m_Source = {};
    jpeg_decompress_struct m_Info = {};
    uint8_t* m_Dest = nullptr;
};
