#include "engine/imaging/JpegCodec.h"

#include "engine/imaging/CJpegReader.h"

namespace
{

// A block of 8 x 8 samples takes at least one bit; with the sampling factors allowed that is fewer
// pixels a byte than this.
constexpr uint64_t MAX_PIXELS_PER_BYTE = 1024;

constexpr int QUALITY = 95;
constexpr uint16_t DOTS_PER_INCH = 100; // no picture here has a size on paper; readers expect one
constexpr uint8_t DENSITY_IN_INCHES = 1;

bool IsOpaque(const IImage& image)
{
    const uint8_t* pData = image.GetRawData();
    const size_t nPixels = size_t{image.GetWidth()} * image.GetHeight();
    for (size_t i = 0; i < nPixels; ++i)
    {
        if (pData[i * 4 + 3] != 0xFF)
        {
            return false;
        }
    }
    return true;
}

J_COLOR_SPACE GetColorSpace(EImageFormat eFormat)
{
    switch (eFormat)
    {
    case EImageFormat::Rgb24:
        return JCS_RGB;
    case EImageFormat::Rgba32:
        return JCS_EXT_RGBX;
    case EImageFormat::Indexed8:
    case EImageFormat::Unknown:
        break;
    }
    return JCS_GRAYSCALE;
}

// One write, with the bytes that are not in the output yet.
struct SJpegWrite
{
    SJpegWrite(const IImage& source, std::vector<uint8_t>& target);

    ~SJpegWrite() { jpeg_destroy_compress(&info); }

    SJpegWrite(const SJpegWrite&) = delete;
    SJpegWrite& operator=(const SJpegWrite&) = delete;

    const IImage& image;
    std::vector<uint8_t>& out;
    SJpegErrors errors;
    jpeg_destination_mgr destination = {};
    jpeg_compress_struct info = {};
    uint8_t aBytes[4096] = {};
};

SJpegWrite& GetWrite(j_compress_ptr pInfo)
{
    return *static_cast<SJpegWrite*>(pInfo->client_data);
}

// The error jumps over this frame, so nothing with a destructor may live here.
void Flush(j_compress_ptr pInfo)
{
    SJpegWrite& write = GetWrite(pInfo);
    const size_t nBytes = sizeof(write.aBytes) - write.destination.free_in_buffer;
    if (!AppendBytes(write.out, write.aBytes, nBytes))
    {
        SJpegErrors::Fail(reinterpret_cast<j_common_ptr>(pInfo), false, "not enough memory");
    }
    write.destination.next_output_byte = write.aBytes;
    write.destination.free_in_buffer = sizeof(write.aBytes);
}

// libjpeg has used up the whole buffer, whatever its counter says.
boolean OnFull(j_compress_ptr pInfo)
{
    pInfo->dest->free_in_buffer = 0;
    Flush(pInfo);
    return TRUE;
}

SJpegWrite::SJpegWrite(const IImage& source, std::vector<uint8_t>& target)
    : image(source)
    , out(target)
{
    destination.next_output_byte = aBytes;
    destination.free_in_buffer = sizeof(aBytes);
    destination.init_destination = [](j_compress_ptr) {
    };
    destination.empty_output_buffer = OnFull;
    destination.term_destination = Flush;
    info.err = &errors.manager;
    info.client_data = this;
}

void WriteSteps(SJpegWrite& write)
{
    jpeg_compress_struct& info = write.info;
    const size_t nPixelBytes = write.image.GetBitsPerPixel() / 8;
    jpeg_create_compress(&info);
    info.dest = &write.destination;
    info.image_width = write.image.GetWidth();
    info.image_height = write.image.GetHeight();
    info.input_components = static_cast<int>(nPixelBytes);
    info.in_color_space = GetColorSpace(write.image.GetFormat());
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, QUALITY, TRUE);
    info.density_unit = DENSITY_IN_INCHES;
    info.X_density = DOTS_PER_INCH;
    info.Y_density = DOTS_PER_INCH;
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height)
    {
        const size_t nRow = info.next_scanline * nPixelBytes * info.image_width;
        // It reads only, its types are older than const.
        auto* pRow = const_cast<uint8_t*>(write.image.GetRawData()) + nRow;
        jpeg_write_scanlines(&info, &pRow, 1);
    }
    jpeg_finish_compress(&info);
}

bool RunGuarded(SJpegWrite& write)
{
    // A fault jumps back to here; what has a destructor lives in the caller, whose frame stays.
    if (setjmp(write.errors.jump) != 0)
    {
        return false;
    }
    WriteSteps(write);
    return true;
}

} // namespace

bool IsJpeg(std::span<const uint8_t> data)
{
    return StartsWith(data, "\xff\xd8\xff");
}

// Goes from segment to segment to the one that begins a picture and names its size.
SImageSize PeekJpegSize(std::span<const uint8_t> data)
{
    constexpr size_t HEAD = 9; // mark, length, bits, height, width
    const auto read16 = [data](size_t iAt)
    {
        return uint32_t{data[iAt]} << 8 | data[iAt + 1];
    };
    for (size_t iAt = 2; iAt + HEAD <= data.size() && data[iAt] == 0xFF;)
    {
        const uint8_t uMark = data[iAt + 1];
        const bool bOther = uMark == 0xC4 || uMark == 0xC8 || uMark == 0xCC; // tables
        if (uMark >= 0xC0 && uMark <= 0xCF && !bOther)
        {
            return {read16(iAt + 7), read16(iAt + 5)};
        }
        // A byte that only fills up stands before a mark.
        iAt += uMark == 0xFF ? 1 : 2 + read16(iAt + 2);
    }
    return {};
}

bool DecodeJpeg(std::span<const uint8_t> data, SPicture& picture, std::string& strFault)
{
    CJpegReader reader(data);
    if (!reader.ReadHeader())
    {
        strFault = reader.GetFault();
        if (reader.IsRefusedForSize()) // told with the limits that hold for all formats
        {
            CheckImageSize(reader.GetWidth(), reader.GetHeight(), strFault);
        }
        return false;
    }
    if (!CheckImageSize(reader.GetWidth(), reader.GetHeight(), strFault))
    {
        return false;
    }
    if (uint64_t{reader.GetWidth()} * reader.GetHeight() / MAX_PIXELS_PER_BYTE > data.size())
    {
        strFault = "damaged JPEG file: the file is too short for its size in pixels";
        return false;
    }
    const EImageFormat eFormat = reader.IsGrey() ? EImageFormat::Indexed8 : EImageFormat::Rgb24;
    if (!MakeImage(picture, reader.GetWidth(), reader.GetHeight(), eFormat, strFault))
    {
        return false;
    }
    if (!reader.ReadPixels(picture.pImage->GetRawData()))
    {
        strFault = reader.GetFault();
        return false;
    }
    return true;
}

bool EncodeJpeg(const IImage& image,
                const IPalette* /*pPalette*/,
                std::vector<uint8_t>& out,
                std::string& strFault)
{
    if (image.GetFormat() == EImageFormat::Rgba32 && !IsOpaque(image))
    {
        strFault = "JPEG holds no transparency";
        return false;
    }
    SJpegWrite write(image, out);
    if (!RunGuarded(write))
    {
        strFault = write.errors.szText;
        return false;
    }
    return true;
}
