#include "editor/app/CImportSource.h"

#include "editor/core/Words.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/ImportPicture.h"
#include "engine/elevation/TargetExport.h"
#include "host/FileSystem.h"
#include "host/Log.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace
{

constexpr uint32_t THIN_SIDE = 512; // samples a side that a picture in a dialog can show

} // namespace

CImportSource::CImportSource(std::string strPath)
    : m_Path(std::move(strPath))
    , m_bSet(m_Tiles.Find(m_Path))
{
    SExportNotes notes;
    if (notes.Read(GetTargetTextPath(GetWholePath())))
    {
        m_Notes = notes;
    }
}

std::string CImportSource::GetName() const
{
    const std::string strName = std::filesystem::path(GetWholePath()).filename().string();
    return m_bSet ? std::to_string(m_Tiles.uColumns * m_Tiles.uRows) + Words(" tiles of ") + strName
                  : strName;
}

std::string CImportSource::GetNotesName() const
{
    return std::filesystem::path(GetTargetTextPath(GetWholePath())).filename().string();
}

bool CImportSource::IsRaw() const
{
    const SElevationFormat* pFormat = FindFormatOfFile(m_Path.c_str());
    return pFormat != nullptr && pFormat->bRaw;
}

bool CImportSource::Read()
{
    SImportOptions options;
    if (m_Notes && IsRaw())
    {
        options.uColumns = m_Notes->uColumns;
        options.uRows = m_Notes->uRows;
        options.eByteOrder = m_Notes->eByteOrder;
        // A text of other samples would make a fault of a file that can be read.
        const uint64_t uBytes = uint64_t{4} * options.uColumns * options.uRows;
        const bool bShort = FindFormatOfFile(m_Path.c_str())->eSamples != ESampleType::Float;
        std::error_code error;
        if (std::filesystem::file_size(fs::root_path(m_Path.c_str()), error) !=
            (bShort ? uBytes / 2 : uBytes))
        {
            m_Notes.reset();
            options = {};
        }
    }
    const bool bRead = Read(options);
    const uint32_t uTiles = m_bSet ? m_Tiles.uColumns : 1;
    if (bRead && m_Notes && !m_Notes->IsOf(uTiles, m_Grid.uColumns, m_Grid.uRows))
    {
        m_Notes.reset();
        return !IsRaw() || Read(SImportOptions()); // it was read in their shape
    }
    return bRead;
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
