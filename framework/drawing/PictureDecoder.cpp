#include "framework/drawing/PictureDecoder.h"

#include "framework/drawing/CPixelBuffer.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

// The chunk that ends a PNG. The PNG library does not read it, so a picture that was cut off behind
// its pixels would pass without it.
constexpr std::array<uint8_t, 12> LAST_CHUNK = {
    0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};

// What the PNG library keeps between the header and the pixels.
class CPngImage
{
public:
    CPngImage() { m_Image.version = PNG_IMAGE_VERSION; }

    ~CPngImage() { png_image_free(&m_Image); }

    CPngImage(const CPngImage&) = delete;
    CPngImage& operator=(const CPngImage&) = delete;

    png_image& Get() { return m_Image; }

private:
    png_image m_Image = {};
};

} // namespace

bool DecodePicture(const uint8_t* pPng, size_t nBytes, CPixelBuffer& pixels)
{
    CPngImage picture;
    png_image& image = picture.Get();
    if (pPng == nullptr || nBytes < LAST_CHUNK.size() ||
        !std::equal(LAST_CHUNK.begin(), LAST_CHUNK.end(), pPng + nBytes - LAST_CHUNK.size()) ||
        png_image_begin_read_from_memory(&image, pPng, nBytes) == 0 ||
        image.width > MAX_PICTURE_SIDE || image.height > MAX_PICTURE_SIDE)
    {
        return false;
    }
    image.format = PNG_FORMAT_BGRA;
    CPixelBuffer decoded;
    if (!decoded.Create(static_cast<int>(image.width), static_cast<int>(image.height), 32) ||
        png_image_finish_read(&image, nullptr, decoded.GetRow(0), decoded.GetStride(), nullptr) ==
            0)
    {
        return false;
    }
    pixels = std::move(decoded);
    return true;
}
