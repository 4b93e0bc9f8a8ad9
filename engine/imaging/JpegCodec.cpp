#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/QtPicture.h"

#include <QBuffer>
#include <QImageWriter>

#include <cstring>

// JPEG goes through Qt, which shows half a picture for half a file without an error. So the stream
// of markers is walked first.
namespace
{

constexpr uint8_t START_OF_SCAN = 0xDA;
constexpr uint8_t END_OF_IMAGE = 0xD9;

// A block of 8 x 8 samples takes at least one bit; with the sampling factors allowed that is fewer
// pixels a byte than this.
constexpr uint64_t MAX_PIXELS_PER_BYTE = 1024;

constexpr int QUALITY = 95;

struct SJpegFrame
{
    uint32_t Width = 0;
    uint32_t Height = 0;
    uint32_t Components = 0;
};

uint32_t ReadBe16(const uint8_t* pData)
{
    return uint32_t{pData[0]} << 8 | pData[1];
}

bool IsFrameMarker(uint8_t uMarker)
{
    return uMarker >= 0xC0 && uMarker <= 0xCF && uMarker != 0xC4 && uMarker != 0xC8 &&
           uMarker != 0xCC;
}

// Position of the marker that ends the scan data at nPosition, or the end of the data. In scan data
// 0xFF is followed by 0 or by a restart marker.
size_t SkipScan(std::span<const uint8_t> Data, size_t nPosition)
{
    while (nPosition + 1 < Data.size())
    {
        const auto* pFound = static_cast<const uint8_t*>(
            std::memchr(Data.data() + nPosition, 0xFF, Data.size() - 1 - nPosition));
        if (pFound == nullptr)
        {
            break;
        }
        nPosition = static_cast<size_t>(pFound - Data.data());
        const uint8_t uNext = Data[nPosition + 1];
        if (uNext != 0 && uNext != 0xFF && (uNext < 0xD0 || uNext > 0xD7))
        {
            return nPosition;
        }
        nPosition += uNext == 0xFF ? 1 : 2;
    }
    return Data.size();
}

bool ReadFrame(std::span<const uint8_t> Segment, SJpegFrame& Frame)
{
    if (Segment.size() < 8)
    {
        return false;
    }
    Frame.Height = ReadBe16(&Segment[3]);
    Frame.Width = ReadBe16(&Segment[5]);
    Frame.Components = Segment[7];
    return true;
}

// Null when the markers run whole from the first to the end of the image, else the fault.
const char* WalkMarkers(std::span<const uint8_t> Data, SJpegFrame& Frame)
{
    constexpr const char* pszShort = "damaged JPEG file: the file ends too early";
    constexpr const char* pszBad = "damaged JPEG file: a marker is not where it should be";
    bool bScan = false;
    size_t nPosition = 2;
    while (nPosition + 1 < Data.size())
    {
        const uint8_t uMarker = Data[nPosition + 1];
        if (Data[nPosition] != 0xFF)
        {
            return pszBad;
        }
        if (uMarker == END_OF_IMAGE)
        {
            return bScan && Frame.Components != 0 ? nullptr : pszBad;
        }
        if (uMarker == 0xFF) // padding before a marker
        {
            ++nPosition;
            continue;
        }
        const size_t nRest = Data.size() - nPosition - 2;
        const size_t nSegment = nRest >= 2 ? ReadBe16(&Data[nPosition + 2]) : 2;
        if (nRest < nSegment)
        {
            return pszShort;
        }
        const bool bFrame = IsFrameMarker(uMarker);
        if (nSegment < 2 || (bFrame && !ReadFrame(Data.subspan(nPosition + 2, nSegment), Frame)))
        {
            return pszBad;
        }
        nPosition += 2 + nSegment;
        if (uMarker == START_OF_SCAN)
        {
            bScan = true;
            nPosition = SkipScan(Data, nPosition);
        }
    }
    return pszShort;
}

// Of the decoder's texts only those about the picture's own data make a file a damaged one; others
// are remarks, on a revision number for one.
bool IsDamage(const std::string& strComplaint)
{
    return strComplaint.starts_with("Corrupt") || strComplaint.starts_with("Premature") ||
           strComplaint.starts_with("Inconsistent");
}

bool CopyPicture(const QImage& Source, SPicture& Picture, std::string& strFault)
{
    const bool bGrey = Source.format() == QImage::Format_Grayscale8;
    const QImage Rows = bGrey ? Source : Source.convertToFormat(QImage::Format_RGB32);
    if (Rows.isNull())
    {
        strFault = "not enough memory";
        return false;
    }
    const auto uWidth = static_cast<uint32_t>(Rows.width());
    const auto uHeight = static_cast<uint32_t>(Rows.height());
    const EImageFormat eFormat = bGrey ? EImageFormat::Indexed8 : EImageFormat::Rgb24;
    if (!MakeImage(Picture, uWidth, uHeight, eFormat, strFault))
    {
        return false;
    }
    for (uint32_t uRow = 0; uRow < uHeight; ++uRow)
    {
        const uchar* pSource = Rows.constScanLine(static_cast<int>(uRow));
        uint8_t* pDest = Picture.Image->GetRow(uRow);
        if (bGrey)
        {
            std::memcpy(pDest, pSource, uWidth);
            continue;
        }
        const auto* pColors = reinterpret_cast<const QRgb*>(pSource);
        for (uint32_t i = 0; i < uWidth; ++i, pDest += 3)
        {
            pDest[0] = static_cast<uint8_t>(qRed(pColors[i]));
            pDest[1] = static_cast<uint8_t>(qGreen(pColors[i]));
            pDest[2] = static_cast<uint8_t>(qBlue(pColors[i]));
        }
    }
    return true;
}

bool IsOpaque(const IImage& Image)
{
    const uint8_t* pData = Image.GetRawData();
    const size_t nPixels = size_t{Image.GetWidth()} * Image.GetHeight();
    for (size_t i = 0; i < nPixels; ++i)
    {
        if (pData[i * 4 + 3] != 0xFF)
        {
            return false;
        }
    }
    return true;
}

QImage::Format GetQtFormat(EImageFormat eFormat)
{
    switch (eFormat)
    {
    case EImageFormat::Rgb24:
        return QImage::Format_RGB888;
    case EImageFormat::Rgba32:
        return QImage::Format_RGBX8888;
    case EImageFormat::Indexed8:
    case EImageFormat::Unknown:
        break;
    }
    return QImage::Format_Grayscale8;
}

} // namespace

bool DecodeJpeg(std::span<const uint8_t> Data, SPicture& Picture, std::string& strFault)
{
    SJpegFrame Frame;
    if (const char* pszFault = WalkMarkers(Data, Frame); pszFault != nullptr)
    {
        strFault = pszFault;
        return false;
    }
    if (!CheckImageSize(Frame.Width, Frame.Height, strFault))
    {
        return false;
    }
    if (uint64_t{Frame.Width} * Frame.Height / MAX_PIXELS_PER_BYTE > Data.size())
    {
        strFault = "damaged JPEG file: the file is too short for its size in pixels";
        return false;
    }
    std::string strComplaint;
    const QImage Source = ReadQtPicture(Data, "jpeg", strComplaint);
    if (Source.isNull() || IsDamage(strComplaint))
    {
        strFault =
            (Source.isNull() ? "unreadable JPEG file: " : "damaged JPEG file: ") + strComplaint;
        return false;
    }
    return CopyPicture(Source, Picture, strFault);
}

bool EncodeJpeg(const IImage& Image, std::vector<uint8_t>& Out, std::string& strFault)
{
    if (Image.GetFormat() == EImageFormat::Rgba32 && !IsOpaque(Image))
    {
        strFault = "JPEG holds no transparency";
        return false;
    }
    const qsizetype nStride =
        static_cast<qsizetype>(Image.GetWidth()) * (Image.GetBitsPerPixel() / 8);
    const QImage Source(Image.GetRawData(),
                        static_cast<int>(Image.GetWidth()),
                        static_cast<int>(Image.GetHeight()),
                        nStride,
                        GetQtFormat(Image.GetFormat()));
    QByteArray Bytes;
    QBuffer Buffer(&Bytes);
    Buffer.open(QIODevice::WriteOnly);
    QImageWriter Writer(&Buffer, "jpeg");
    Writer.setQuality(QUALITY);
    if (!Writer.write(Source))
    {
        strFault = Writer.errorString().simplified().toStdString();
        return false;
    }
    Out.assign(Bytes.begin(), Bytes.end());
    return true;
}
