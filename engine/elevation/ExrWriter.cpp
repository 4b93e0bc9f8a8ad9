#include "engine/elevation/ExportWriters.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfIO.h>
#include <OpenEXR/ImfOutputFile.h>

#include <algorithm>
#include <new>
#include <stdexcept>

namespace
{

constexpr char EXR_CHANNEL[] = "Y"; // what readers take for grey

// A file of ours, as the library writes.
class CExrTarget : public Imf::OStream
{
public:
    explicit CExrTarget(fs::file& file)
        : OStream("terrain")
        , m_File(file)
    {
    }

    void write(const char* pSource, int nBytes) override
    {
        const auto nAsked = static_cast<size_t>(nBytes);
        if (m_File.write(pSource, nAsked) != nAsked)
        {
            throw std::runtime_error("it cannot be written"); // the file itself knows why
        }
    }

    uint64_t tellp() override { return m_File.tell(); }

    void seekp(uint64_t nPosition) override
    {
        if (!m_File.seek(nPosition))
        {
            throw std::runtime_error("it cannot be written from the start again");
        }
    }

private:
    fs::file& m_File;
};

template <typename TSample>
bool WriteExrRows(CExrTarget& target, CExportRows& rows, Imf::PixelType eType)
{
    const auto iColumns = static_cast<int>(rows.GetColumns());
    // Without loss, and read by all.
    Imf::Header header(iColumns,
                       static_cast<int>(rows.GetRows()),
                       1.0F,
                       Imath::V2f(0.0F, 0.0F),
                       1.0F,
                       Imf::INCREASING_Y,
                       Imf::ZIP_COMPRESSION);
    header.channels().insert(EXR_CHANNEL, Imf::Channel(eType));
    Imf::OutputFile file(target, header, 0); // 0: no threads of its own
    std::vector<TSample> samples(rows.GetColumns());
    Imf::FrameBuffer source;
    // Every row is written from the same place: the step between rows is 0.
    source.insert(EXR_CHANNEL,
                  Imf::Slice(eType, reinterpret_cast<char*>(samples.data()), sizeof(TSample), 0));
    file.setFrameBuffer(source);
    for (uint32_t z = 0; z < rows.GetRows(); ++z)
    {
        const float* pRow = rows.GetRow(z);
        if (pRow == nullptr)
        {
            return false;
        }
        std::transform(pRow,
                       pRow + rows.GetColumns(),
                       samples.begin(),
                       [](float fSample) { return static_cast<TSample>(fSample); });
        file.writePixels(1);
    }
    return true;
}

} // namespace

bool WriteExr(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& strFault)
{
    try
    {
        CExrTarget target(file);
        return plan.uBits == 16 ? WriteExrRows<Imath::half>(target, rows, Imf::HALF)
                                : WriteExrRows<float>(target, rows, Imf::FLOAT);
    }
    catch (const std::bad_alloc&)
    {
        throw;
    }
    catch (const std::exception& fault)
    {
        strFault = fault.what();
        std::replace(strFault.begin(), strFault.end(), '\n', ' ');
        return false;
    }
}
