#include "engine/elevation/ExrReader.h"

#include "engine/elevation/DecodeGrid.h"
#include "engine/elevation/ReportText.h"
#include "engine/elevation/SampleCopy.h"
#include "host/Progress.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfIO.h>
#include <OpenEXR/ImfInputFile.h>
#include <OpenEXR/ImfTileDescription.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace
{

constexpr uint8_t EXR_SIGNATURE[] = {0x76, 0x2F, 0x31, 0x01};
constexpr size_t EXR_HEADER_AT = 8; // behind signature and version
constexpr uint32_t EXR_TILED = 0x200;
constexpr uint32_t EXR_DEEP = 0x800;
constexpr uint32_t EXR_PARTS = 0x1000;

// A byte of a file stands for fewer bytes of samples, whatever the compression.
constexpr uint64_t MOST_RATIO = 4096;
constexpr uint64_t MOST_TILE = uint64_t{1} << 24; // samples

uint32_t ReadExrNumber(std::span<const uint8_t> bytes, size_t nAt)
{
    uint32_t uNumber = 0;
    std::memcpy(&uNumber, bytes.data() + nAt, sizeof(uNumber));
    return uNumber;
}

// Bytes in memory, as the library reads files.
class CExrBytes : public Imf::IStream
{
public:
    explicit CExrBytes(std::span<const uint8_t> bytes)
        : IStream("")
        , m_Bytes(bytes)
    {
    }

    bool read(char* pDest, int nBytes) override
    {
        if (nBytes < 0 || m_Position > m_Bytes.size() ||
            static_cast<size_t>(nBytes) > m_Bytes.size() - m_Position)
        {
            throw std::runtime_error("it ends too early");
        }
        std::memcpy(pDest, m_Bytes.data() + m_Position, static_cast<size_t>(nBytes));
        m_Position += static_cast<size_t>(nBytes);
        return m_Position < m_Bytes.size();
    }

    uint64_t tellg() override { return m_Position; }

    void seekg(uint64_t nPosition) override { m_Position = nPosition; }

private:
    std::span<const uint8_t> m_Bytes;
    uint64_t m_Position = 0;
};

// One decode; each step returns false with the fault in m_Fault. What the library throws ends in
// Decode.
class CExrDecoder
{
public:
    explicit CExrDecoder(std::span<const uint8_t> bytes)
        : m_Bytes(bytes)
    {
    }

    bool Decode();

    SSampleGrid& GetGrid() { return m_Grid; }

    const std::string& GetFault() const { return m_Fault; }

private:
    bool CheckAttributes();
    bool CheckHeader();
    bool ChooseChannel(const Imf::Header& header);
    bool CheckSize(const Imf::Header& header);
    bool ReadSamples();

    bool Fail(std::string strFault)
    {
        m_Fault = std::move(strFault);
        return false;
    }

    std::span<const uint8_t> m_Bytes;
    bool m_bTiled = false;
    std::string m_Channel;
    SSampleGrid m_Grid;
    std::string m_Fault;
};

bool CExrDecoder::Decode()
{
    try
    {
        return CheckAttributes() && CheckHeader() && ReadSamples() && CheckSamples(m_Grid, m_Fault);
    }
    catch (const std::bad_alloc&)
    {
        throw;
    }
    catch (const std::exception& fault)
    {
        std::string strText = fault.what();
        for (char& c : strText)
        {
            c = c >= ' ' && c <= '~' ? c : ' '; // names come out of the file
        }
        strText.erase(std::min(strText.find_last_not_of(". ") + 1, strText.size()));
        return Fail("damaged EXR file: " + strText);
    }
}

// The library takes the memory that an attribute claims before it looks at what there is.
bool CExrDecoder::CheckAttributes()
{
    if (!IsExr(m_Bytes) || m_Bytes.size() <= EXR_HEADER_AT)
    {
        return Fail(IsExr(m_Bytes) ? "shorter than a header" : "not an EXR file");
    }
    const uint32_t uVersion = ReadExrNumber(m_Bytes, sizeof(EXR_SIGNATURE));
    if ((uVersion & (EXR_DEEP | EXR_PARTS)) != 0)
    {
        return Fail("an EXR file of several parts or of samples in depth");
    }
    m_bTiled = (uVersion & EXR_TILED) != 0;
    size_t nAt = EXR_HEADER_AT;
    const auto skipText = [&]
    {
        const auto end =
            std::find(m_Bytes.begin() + static_cast<ptrdiff_t>(nAt), m_Bytes.end(), uint8_t{0});
        nAt = static_cast<size_t>(end - m_Bytes.begin()) + 1;
        return nAt + sizeof(uint32_t) <= m_Bytes.size();
    };
    while (nAt < m_Bytes.size() && m_Bytes[nAt] != 0)
    {
        if (!skipText() || !skipText()) // name and type
        {
            return Fail("damaged EXR file: its header has no end");
        }
        const size_t nSize = ReadExrNumber(m_Bytes, nAt);
        nAt += sizeof(uint32_t);
        if (nSize > m_Bytes.size() - nAt)
        {
            return Fail("damaged EXR file: its header has no end");
        }
        nAt += nSize;
    }
    return nAt < m_Bytes.size() || Fail("damaged EXR file: its header has no end");
}

// Before the library takes memory for what the header claims.
bool CExrDecoder::CheckHeader()
{
    CExrBytes stream(m_Bytes);
    stream.seekg(EXR_HEADER_AT);
    Imf::Header header;
    auto iVersion = static_cast<int>(ReadExrNumber(m_Bytes, sizeof(EXR_SIGNATURE)));
    header.readFrom(stream, iVersion);
    if (!ChooseChannel(header))
    {
        return false;
    }
    header.sanityCheck(m_bTiled);
    if (m_bTiled)
    {
        const Imf::TileDescription& tile = header.tileDescription();
        if (uint64_t{tile.xSize} * tile.ySize > MOST_TILE)
        {
            return Fail(MakeText("tiles of %u x %u samples are too large", tile.xSize, tile.ySize));
        }
    }
    return CheckSize(header);
}

bool CExrDecoder::ChooseChannel(const Imf::Header& header)
{
    const Imf::ChannelList& channels = header.channels();
    size_t nChannels = 0;
    for (auto at = channels.begin(); at != channels.end(); ++at)
    {
        ++nChannels;
    }
    auto chosen = channels.find("Y");
    chosen = nChannels == 1 ? channels.begin() : chosen;
    if (chosen == channels.end())
    {
        return Fail(MakeText("has %zu channels, and none is called Y", nChannels));
    }
    const Imf::Channel& channel = chosen.channel();
    if (channel.xSampling != 1 || channel.ySampling != 1)
    {
        return Fail("its channel has not every sample");
    }
    m_Channel = chosen.name();
    m_Grid.eType = channel.type == Imf::UINT ? ESampleType::Unsigned : ESampleType::Float;
    m_Grid.uBits = channel.type == Imf::HALF ? 16 : 32;
    m_Grid.eByteOrder = EByteOrder::Little;
    return true;
}

bool CExrDecoder::CheckSize(const Imf::Header& header)
{
    const Imath::Box2i& window = header.dataWindow();
    const int64_t nColumns = int64_t{window.max.x} - window.min.x + 1;
    const int64_t nRows = int64_t{window.max.y} - window.min.y + 1;
    if (std::min(nColumns, nRows) < MIN_SAMPLES || std::max(nColumns, nRows) > MAX_SAMPLES)
    {
        return Fail(MakeText("%lld x %lld samples are no grid that can be read",
                             static_cast<long long>(nColumns),
                             static_cast<long long>(nRows)));
    }
    m_Grid.uColumns = static_cast<uint32_t>(nColumns);
    m_Grid.uRows = static_cast<uint32_t>(nRows);
    const uint64_t nSamples = uint64_t{m_Grid.uColumns} * m_Grid.uRows;
    if (nSamples * (m_Grid.uBits / 8) / MOST_RATIO > m_Bytes.size())
    {
        return Fail(MakeText("too short for %u x %u samples", m_Grid.uColumns, m_Grid.uRows));
    }
    return true;
}

bool CExrDecoder::ReadSamples()
{
    CExrBytes stream(m_Bytes);
    Imf::InputFile file(stream, 0); // 0: no threads of its own
    const Imath::Box2i window = file.header().dataWindow();
    m_Grid.samples.resize(size_t{m_Grid.uColumns} * m_Grid.uRows);
    Imf::FrameBuffer target;
    target.insert(m_Channel,
                  Imf::Slice::Make(Imf::FLOAT, m_Grid.samples.data(), window, sizeof(float)));
    file.setFrameBuffer(target);
    // Blocks of rows are packed together, of 256 at most: slices of as many unpack none twice.
    constexpr int SLICE = 256;
    CProgressSteps progress("Reading the height map", m_Grid.uRows);
    for (int y = window.min.y; y <= window.max.y; y += SLICE)
    {
        if (!progress.Reach(static_cast<size_t>(y - window.min.y)))
        {
            return Fail("cancelled");
        }
        file.readPixels(y, std::min(y + SLICE - 1, window.max.y));
    }
    return true;
}

} // namespace

bool IsExr(std::span<const uint8_t> bytes)
{
    return bytes.size() >= sizeof(EXR_SIGNATURE) &&
           std::equal(std::begin(EXR_SIGNATURE), std::end(EXR_SIGNATURE), bytes.begin());
}

bool DecodeExr(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    return DecodeGrid<CExrDecoder>(bytes, grid, strFault);
}
