#include "engine/elevation/ExportWriters.h"

#include "engine/elevation/AsciiGridReader.h"
#include "engine/elevation/ReportText.h"
#include "engine/imaging/Grey16.h"
#include "host/Log.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "samples are written as they lie");

namespace
{

// One row in the numbers of the file.
template <typename TSample>
void PackRow(const float* pSamples, uint32_t nCount, bool bSwap, std::vector<uint8_t>& bytes)
{
    bytes.resize(size_t{nCount} * sizeof(TSample));
    for (uint32_t i = 0; i < nCount; ++i)
    {
        uint8_t* pDest = bytes.data() + size_t{i} * sizeof(TSample);
        // Rows come rounded and cut to what TSample holds.
        const auto sample = static_cast<TSample>(pSamples[i]);
        std::memcpy(pDest, &sample, sizeof(TSample));
        if (bSwap)
        {
            std::reverse(pDest, pDest + sizeof(TSample));
        }
    }
}

template <typename TSample> bool WriteRows(fs::file& file, CExportRows& rows, bool bSwap)
{
    std::vector<uint8_t> bytes;
    for (uint32_t z = 0; z < rows.GetRows(); ++z)
    {
        const float* pRow = rows.GetRow(z);
        if (pRow == nullptr)
        {
            return false;
        }
        PackRow<TSample>(pRow, rows.GetColumns(), bSwap, bytes);
        // A fault sticks to the file and shows when it is closed.
        file.write(bytes.data(), bytes.size());
    }
    return true;
}

// The shortest text that reads back to the same number.
void AppendExact(std::string& strText, float fValue)
{
    char aText[32];
    const auto [pEnd, error] = std::to_chars(std::begin(aText), std::end(aText), fValue);
    strText.append(aText, pEnd);
}

// With words and numbers in the order that most readers need.
std::string MakeGridHeader(const CExportRows& rows, const SExportPlan& plan)
{
    const SGeoTags& geo = plan.geo;
    const double dNowhere = GetNowhere(std::max(plan.dSpacingX, plan.dSpacingZ));
    SMapPoint place = {dNowhere, dNowhere};
    if (geo.bKnown)
    {
        const double dHalf = geo.bCells ? 0.5 : 0.0;
        place = {geo.lastZ.dX - dHalf * plan.dSpacingX, geo.lastZ.dY - dHalf * plan.dSpacingZ};
    }
    const std::string strWord = geo.bKnown && geo.bCells ? "corner " : "center ";
    std::string strText = MakeText("ncols %u\nnrows %u\n", rows.GetColumns(), rows.GetRows());
    strText += "xll" + strWord + MakeExactText(place.dX) + "\nyll" + strWord +
               MakeExactText(place.dY) + "\n";
    const bool bSquare = plan.dSpacingX == plan.dSpacingZ;
    strText += (bSquare ? "cellsize " : "dx ") + MakeExactText(plan.dSpacingX) + "\n";
    strText += bSquare ? "" : "dy " + MakeExactText(plan.dSpacingZ) + "\n";
    strText += geo.noData ? "NODATA_value " + MakeExactText(*geo.noData) + "\n" : "";
    return strText;
}

} // namespace

bool WriteRaw(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& /*strFault*/)
{
    const bool bSwap = plan.eByteOrder == EByteOrder::Big;
    switch (plan.pFormat->eSamples)
    {
    case ESampleType::Unsigned:
        return WriteRows<uint16_t>(file, rows, bSwap);
    case ESampleType::Signed:
        return WriteRows<int16_t>(file, rows, bSwap);
    case ESampleType::Float:
        break;
    }
    return WriteRows<float>(file, rows, bSwap);
}

bool WriteNpy(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& strFault)
{
    constexpr size_t ALIGNMENT = 64; // the samples start at a multiple of it
    constexpr size_t FIXED_BYTES = 10;
    std::string strHeader =
        MakeText("{'descr': '<f4', 'fortran_order': False, 'shape': (%u, %u), }",
                 rows.GetRows(),
                 rows.GetColumns());
    while ((FIXED_BYTES + strHeader.size() + 1) % ALIGNMENT != 0)
    {
        strHeader += ' ';
    }
    strHeader += '\n';
    std::string strStart("\x93NUMPY\1\0", 8);
    strStart += static_cast<char>(strHeader.size());
    strStart += '\0'; // the header is shorter than 256 bytes
    strStart += strHeader;
    file.write(strStart.data(), strStart.size());
    return WriteRaw(file, rows, plan, strFault);
}

bool WriteAsciiGrid(fs::file& file,
                    CExportRows& rows,
                    const SExportPlan& plan,
                    std::string& /*strFault*/)
{
    std::string strText = MakeGridHeader(rows, plan);
    for (uint32_t z = 0; z < rows.GetRows(); ++z)
    {
        const float* pRow = rows.GetRow(z);
        if (pRow == nullptr)
        {
            return false;
        }
        for (uint32_t x = 0; x < rows.GetColumns(); ++x)
        {
            AppendExact(strText, pRow[x]);
            strText += x + 1 < rows.GetColumns() ? ' ' : '\n';
        }
        file.write(strText.data(), strText.size());
        strText.clear();
    }
    return true;
}

bool SaveGreyPng(const char* pszPath,
                 const SSampleView& heights,
                 const SVec3& /*size*/,
                 const SExportPlan& plan)
{
    CExportRows rows(heights, plan);
    std::vector<uint16_t> codes(size_t{rows.GetColumns()} * rows.GetRows());
    for (uint32_t z = 0; z < rows.GetRows(); ++z)
    {
        const float* pRow = rows.GetRow(z);
        if (pRow == nullptr)
        {
            CrashLog("[ExportHeights] %s: cancelled\n", pszPath);
            return false;
        }
        std::transform(pRow,
                       pRow + rows.GetColumns(),
                       codes.begin() + static_cast<ptrdiff_t>(size_t{z} * rows.GetColumns()),
                       [](float fCode) { return static_cast<uint16_t>(fCode); });
    }
    return SaveGrey16(pszPath, rows.GetColumns(), rows.GetRows(), codes.data());
}
