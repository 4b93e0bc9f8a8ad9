#pragma once

#include "engine/imaging/BmpHeader.h"
#include "engine/imaging/CImage.h"

// Decodes the run-length stream of one BMP into its image; lives for that call. Pixels that the
// stream skips are index 0.
class CBmpRunReader
{
public:
    // All borrowed until the reader is gone. The header is that of the data, the image has its
    // size.
    CBmpRunReader(std::span<const uint8_t> data, const SBmpHeader& header, CImage& image);

    // False when the stream leaves the picture or ends before it does.
    bool Read();

private:
    bool Has4Bits() const { return m_Header.uCompression == BMP_RUNS_4; }

    bool HasRoom(uint32_t uCount) const;
    uint32_t CutToPicture(uint32_t uCount) const;
    uint8_t* GetCursor();
    bool PutRun(uint32_t uCount, uint32_t uValue);
    bool DoEscape(uint32_t uCode);
    bool Skip();
    bool PutLiterals(uint32_t uCount);

    std::span<const uint8_t> m_Stream;
    const SBmpHeader& m_Header;
    CImage& m_Image;
    size_t m_Position = 0; // in the stream
    uint32_t m_Row = 0;    // of the file
    uint32_t m_Column = 0;
    // Some writers run on through the padding of a row: pixels beyond the width, dropped.
    size_t m_RowEnd;
    bool m_Ended = false;
};
