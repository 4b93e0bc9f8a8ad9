#include "engine/imaging/PicturePreview.h"

#include "engine/imaging/CodecTable.h"
#include "engine/imaging/ImageCodecs.h"
#include "host/FileBytes.h"
#include "host/FileSystem.h"

#include <algorithm>
#include <new>
#include <vector>

namespace
{

constexpr char TOO_LARGE[] = "too large to be shown here";
constexpr size_t HEAD_BYTES = 65536;           // where formats say how large a picture is
constexpr uint64_t MOST_BYTES = 256ULL << 20U; // of a file that is read whole

// As many bytes as the beginning of the file has, up to a limit.
bool ReadHead(const char* pszPath, std::vector<uint8_t>& head, std::string& strWhy)
{
    fs::file file;
    if (!file.open(pszPath, fs::mode_read))
    {
        strWhy = "cannot be read";
        return false;
    }
    head.resize(static_cast<size_t>(std::min<uint64_t>(file.length(), HEAD_BYTES)));
    head.resize(file.read(head.data(), head.size()));
    if (head.empty())
    {
        strWhy = "the file is empty";
    }
    return !head.empty();
}

const SImageCodec*
Recognise(std::span<const uint8_t> data, const char* pszPath, std::string& strWhy)
{
    const SImageCodec* pCodec = RecogniseImage(data, pszPath);
    if (pCodec == nullptr)
    {
        strWhy = "not a " + ListImageNames(false) + " file";
    }
    return pCodec;
}

void Load(const char* pszPath, uint64_t nMost, SPicturePreview& preview)
{
    std::vector<uint8_t> head;
    if (!ReadHead(pszPath, head, preview.strWhy))
    {
        return;
    }
    // A mark at the end of a file is not in its head; such a picture is told when it is there as a
    // whole.
    const SImageCodec* pCodec = RecogniseImage(head, pszPath);
    const SImageSize size = pCodec != nullptr ? pCodec->pPeekSize(head) : SImageSize();
    preview.uWidth = size.uWidth;
    preview.uHeight = size.uHeight;
    if (uint64_t{size.uWidth} * size.uHeight > nMost)
    {
        preview.strWhy = TOO_LARGE;
        preview.bSkipped = true;
        return;
    }
    SFileBytes bytes;
    std::string strError;
    const EFileRead eRead = ReadFileBytes(pszPath, MOST_BYTES, bytes, strError);
    if (eRead != EFileRead::Done)
    {
        preview.bSkipped = eRead == EFileRead::TooLong;
        preview.strWhy = preview.bSkipped ? TOO_LARGE : "cannot be read";
        return;
    }
    SPicture picture;
    pCodec = Recognise(bytes.Get(), pszPath, preview.strWhy);
    if (pCodec == nullptr || !pCodec->pDecode(bytes.Get(), picture, preview.strWhy))
    {
        return;
    }
    preview.strWhy.clear(); // a decoder that goes on may have noted a fault
    preview.uWidth = picture.pImage->GetWidth();
    preview.uHeight = picture.pImage->GetHeight();
    preview.pImage = std::move(picture.pImage);
    preview.pPalette = std::move(picture.pPalette);
}

} // namespace

SPicturePreview LoadPicturePreview(const char* pszPath, uint64_t nMost)
{
    SPicturePreview preview;
    try
    {
        Load(pszPath, nMost, preview);
    }
    catch (const std::bad_alloc&)
    {
        preview = {};
        preview.strWhy = "not enough memory to show it";
    }
    return preview;
}
