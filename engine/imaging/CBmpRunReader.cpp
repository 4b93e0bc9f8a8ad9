#include "engine/imaging/CBmpRunReader.h"

#include "engine/imaging/PixelOrder.h"

#include <algorithm>
#include <cstring>

CBmpRunReader::CBmpRunReader(std::span<const uint8_t> data, const SBmpHeader& header, CImage& image)
    : m_Stream(data.subspan(header.nPixelPosition))
    , m_Header(header)
    , m_Image(image)
    , m_RowEnd(header.GetRowBytes() * 8 / header.uBitsPerPixel)
{
}

bool CBmpRunReader::Read()
{
    // Pixels that the runs skip show the first colour.
    std::memset(m_Image.GetRawData(), 0, m_Image.GetByteCount());
    while (!m_Ended && m_Stream.size() - m_Position >= 2)
    {
        const uint32_t uCount = m_Stream[m_Position];
        const uint32_t uValue = m_Stream[m_Position + 1];
        m_Position += 2;
        if (!(uCount != 0 ? PutRun(uCount, uValue) : DoEscape(uValue)))
        {
            return false;
        }
    }
    // The mark at the end may be missing when the last row is full.
    const uint32_t uFullRows = m_Row + (m_Column >= m_Header.uWidth ? 1 : 0);
    return m_Ended || uFullRows >= m_Header.uHeight;
}

bool CBmpRunReader::HasRoom(uint32_t uCount) const
{
    return m_Row < m_Header.uHeight && m_Column + uCount <= m_RowEnd;
}

uint32_t CBmpRunReader::CutToPicture(uint32_t uCount) const
{
    return m_Column < m_Header.uWidth ? std::min(uCount, m_Header.uWidth - m_Column) : 0;
}

uint8_t* CBmpRunReader::GetCursor()
{
    return m_Image.GetRow(m_Header.GetImageRow(m_Row)) + m_Column;
}

bool CBmpRunReader::PutRun(uint32_t uCount, uint32_t uValue)
{
    if (!HasRoom(uCount))
    {
        return false;
    }
    const uint32_t uSeen = CutToPicture(uCount);
    for (uint32_t i = 0; i < uSeen; ++i)
    {
        // A run of 4-bit pixels alternates between two colours.
        const uint32_t uNibble = i % 2 == 0 ? uValue >> 4 : uValue & 0xF;
        GetCursor()[i] = static_cast<uint8_t>(Has4Bits() ? uNibble : uValue);
    }
    m_Column += uCount;
    return true;
}

bool CBmpRunReader::DoEscape(uint32_t uCode)
{
    // A count of 0 begins an escape: the end of a row, of the picture, a step, or pixels one by
    // one.
    switch (uCode)
    {
    case 0:
        m_Column = 0;
        ++m_Row;
        return true;
    case 1:
        m_Ended = true;
        return true;
    case 2:
        return Skip();
    default:
        return PutLiterals(uCode);
    }
}

bool CBmpRunReader::Skip()
{
    if (m_Stream.size() - m_Position < 2)
    {
        return false;
    }
    const uint32_t uRight = m_Stream[m_Position];
    m_Row += m_Stream[m_Position + 1];
    m_Position += 2;
    if (!HasRoom(uRight))
    {
        return false;
    }
    m_Column += uRight;
    return true;
}

bool CBmpRunReader::PutLiterals(uint32_t uCount)
{
    const size_t nBytes = Has4Bits() ? (uCount + 1) / 2 : uCount;
    if (!HasRoom(uCount) || m_Stream.size() - m_Position < nBytes)
    {
        return false;
    }
    if (const uint32_t uSeen = CutToPicture(uCount); uSeen != 0)
    {
        UnpackIndices(m_Stream.data() + m_Position, GetCursor(), uSeen, Has4Bits() ? 4 : 8);
    }
    m_Column += uCount;
    // Literals fill whole words; the very last may come without its padding.
    m_Position = std::min(m_Position + (nBytes + 1) / 2 * 2, m_Stream.size());
    return true;
}
