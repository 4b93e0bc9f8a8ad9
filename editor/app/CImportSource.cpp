#include "editor/app/CImportSource.h"

#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/ImportPicture.h"
#include "host/Log.h"

#include <utility>

namespace
{

constexpr uint32_t THIN_SIDE = 512; // samples a side that a picture in a dialog can show

} // namespace

CImportSource::CImportSource(std::string strPath)
    : m_Path(std::move(strPath))
{
}

bool CImportSource::IsRaw() const
{
    const SElevationFormat* pFormat = FindFormatOfFile(m_Path.c_str());
    return pFormat != nullptr && pFormat->bRaw;
}

bool CImportSource::Read(const SImportOptions& options)
{
    m_Grid = {}; // two of them may be more than there is memory for
    m_Thin = {};
    m_Report = {};
    SImportReport report;
    if (!ReadElevation(m_Path.c_str(), options, m_Grid, report))
    {
        return false;
    }
    if (!ThinGrid(m_Grid, THIN_SIDE, m_Thin))
    {
        LogR("[CImportSource::Read] %s: cancelled\n", m_Path.c_str());
        m_Grid = {};
        return false;
    }
    m_Report = std::move(report);
    return true;
}
