#include "engine/imaging/CJpegReader.h"

#include <jerror.h>

CJpegReader::CJpegReader(std::span<const uint8_t> data)
{
    m_Source.next_input_byte = data.data();
    m_Source.bytes_in_buffer = data.size();
    // libjpeg calls these even though the whole file is in memory and there is nothing to do.
    m_Source.init_source = [](j_decompress_ptr) {
    };
    m_Source.term_source = [](j_decompress_ptr) {
    };
    m_Source.fill_input_buffer = OnEmpty;
    m_Source.skip_input_data = OnSkip;
    m_Source.resync_to_restart = jpeg_resync_to_restart;
    m_Info.err = &m_Errors.manager;
}

CJpegReader::~CJpegReader()
{
    jpeg_destroy_decompress(&m_Info);
}

boolean CJpegReader::OnEmpty(j_decompress_ptr pInfo)
{
    SJpegErrors::Fail(reinterpret_cast<j_common_ptr>(pInfo), true, "the file ends too early");
}

void CJpegReader::OnSkip(j_decompress_ptr pInfo, long nBytes)
{
    if (nBytes <= 0)
    {
        return;
    }
    const auto nSkipped = static_cast<size_t>(nBytes);
    if (nSkipped > pInfo->src->bytes_in_buffer)
    {
        OnEmpty(pInfo);
    }
    pInfo->src->next_input_byte += nSkipped;
    pInfo->src->bytes_in_buffer -= nSkipped;
}

bool CJpegReader::Guard(void (*pStep)(CJpegReader&))
{
    // A fault jumps back to here over libjpeg and the step, where no destructor would run.
    if (setjmp(m_Errors.jump) != 0)
    {
        return false;
    }
    pStep(*this);
    return true;
}

bool CJpegReader::ReadHeader()
{
    if (Guard([](CJpegReader& reader) { reader.ReadHeaderStep(); }))
    {
        return true;
    }
    // Three ways in which libjpeg says the same of a damaged file.
    for (const int iCode : {JWRN_EXTRANEOUS_DATA, JERR_NO_IMAGE, JERR_SOS_NO_SOF})
    {
        if (m_Errors.HasCode(iCode))
        {
            m_Errors.SetFault(true, "a marker is not where it should be");
        }
    }
    return false;
}

bool CJpegReader::ReadPixels(uint8_t* pDest)
{
    m_Dest = pDest;
    return Guard([](CJpegReader& reader) { reader.ReadPixelsStep(); });
}

bool CJpegReader::IsRefusedForSize() const
{
    return m_Errors.HasCode(JERR_EMPTY_IMAGE) || m_Errors.HasCode(JERR_IMAGE_TOO_BIG);
}

void CJpegReader::ReadHeaderStep()
{
    jpeg_create_decompress(&m_Info);
    m_Info.src = &m_Source;
    jpeg_read_header(&m_Info, TRUE);
    if (!IsGrey() && m_Info.out_color_space != JCS_RGB && m_Info.out_color_space != JCS_CMYK)
    {
        SJpegErrors::Fail(
            reinterpret_cast<j_common_ptr>(&m_Info), false, "Unable to read image data");
    }
}

void CJpegReader::ReadPixelsStep()
{
    const bool bInks = m_Info.out_color_space == JCS_CMYK;
    const size_t nRowBytes = size_t{m_Info.image_width} * (IsGrey() ? 1 : 3);
    jpeg_start_decompress(&m_Info);
    JSAMPARRAY ppInks = nullptr; // libjpeg's own memory, which a jump leaves to the destructor
    if (bInks)
    {
        ppInks = m_Info.mem->alloc_sarray(
            reinterpret_cast<j_common_ptr>(&m_Info), JPOOL_IMAGE, m_Info.image_width * 4, 1);
    }
    while (m_Info.output_scanline < m_Info.output_height)
    {
        uint8_t* pRow = m_Dest + m_Info.output_scanline * nRowBytes;
        if (bInks)
        {
            ReadInkRow(*ppInks, pRow);
        }
        else
        {
            jpeg_read_scanlines(&m_Info, &pRow, 1);
        }
    }
    jpeg_finish_decompress(&m_Info);
}

// Programs write inks inverted, 255 for none of one.
void CJpegReader::ReadInkRow(uint8_t* pInks, uint8_t* pDest)
{
    jpeg_read_scanlines(&m_Info, &pInks, 1);
    for (uint32_t i = 0; i < m_Info.image_width; ++i, pInks += 4, pDest += 3)
    {
        for (uint32_t iChannel = 0; iChannel < 3; ++iChannel)
        {
            pDest[iChannel] = static_cast<uint8_t>(uint32_t{pInks[iChannel]} * pInks[3] / 255);
        }
    }
}
