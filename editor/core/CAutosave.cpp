#include "editor/core/CAutosave.h"

#include "editor/core/AutosaveFiles.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "host/Log.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace
{

constexpr char TEMP_EXTENSION[] = ".tmp";

std::string GetHeightFile(const std::string& strFile)
{
    return std::filesystem::path(strFile).replace_extension(".height").string();
}

void RemoveFiles(const std::string& strFile)
{
    std::error_code error; // what is not there need not go
    for (const std::string& strName : {strFile, GetHeightFile(strFile)})
    {
        std::filesystem::remove(strName, error);
        std::filesystem::remove(strName + TEMP_EXTENSION, error);
    }
    ::rmdir(std::filesystem::path(strFile).parent_path().c_str()); // when it is empty
}

} // namespace

CAutosave::CAutosave(CEditorHost& host, CLevelDocument& document)
    : m_Host(host)
    , m_Document(document)
{
}

CAutosave::~CAutosave()
{
    Remove();
}

bool CAutosave::Tick(TimePoint now)
{
    int iStatus = 0;
    if (m_Child > 0 && ::waitpid(m_Child, &iStatus, WNOHANG) == m_Child)
    {
        Finish(iStatus);
    }
    const bool bOther = m_Generation != m_Document.GetGeneration();
    if (bOther || !m_Document.IsModified())
    {
        if (m_bModified)
        {
            Remove();
        }
        m_bModified = false;
        m_Generation = m_Document.GetGeneration();
    }
    if (!m_Document.IsModified() || m_Interval.count() == 0)
    {
        return false;
    }
    if (!m_bModified)
    {
        m_bModified = true;
        m_Due = now + m_Interval;
    }
    if (now < m_Due || m_Child > 0 || m_Host.IsDragging())
    {
        return false;
    }
    m_Due = now + m_Interval;
    const uint64_t uRevision = m_Host.GetEngine().GetCWorld().GetCTerrain()->GetRevision();
    return uRevision != m_CopiedRevision && Start();
}

bool CAutosave::Start()
{
    const CTerrain& terrain = *m_Host.GetEngine().GetCWorld().GetCTerrain();
    const SLevelText level = m_Document.GetText();
    const std::string strFolder = MakeAutosaveFolder(level.strPath);
    if (strFolder.empty())
    {
        CrashLog("[CAutosave::Start] no folder for autosaves can be written\n");
        return false;
    }
    const std::string strTitle = std::filesystem::path(m_Document.GetTitle()).stem().string();
    m_File = strFolder + "/" + strTitle + "-" + std::to_string(::getpid()) + ".level";
    const std::string strHeightFile = GetHeightFile(m_File);
    const std::string strText = MakeAutosaveText(level, strHeightFile);
    const std::string strHeightTemp = strHeightFile + TEMP_EXTENSION;
    const std::string strTextTemp = m_File + TEMP_EXTENSION;
    const SAutosaveJob job = {strFolder.c_str(),
                              strHeightFile.c_str(),
                              strHeightTemp.c_str(),
                              m_File.c_str(),
                              strTextTemp.c_str(),
                              strText.c_str(),
                              strText.size(),
                              terrain.GetHeightData(),
                              terrain.GetVerticesX(),
                              terrain.GetVerticesZ(),
                              terrain.GetSizeVector()};
    m_Child = ::fork();
    if (m_Child == 0)
    {
        ::_exit(WriteAutosave(job));
    }
    if (m_Child < 0)
    {
        CrashLog("[CAutosave::Start] %s: %s\n", m_File.c_str(), std::strerror(errno));
        return false;
    }
    m_CopiedRevision = terrain.GetRevision();
    return true;
}

bool CAutosave::Finish(int iStatus)
{
    m_Child = -1;
    const int iFault = WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : EINTR;
    if (iFault != 0)
    {
        m_CopiedRevision = 0; // tried again when it is due
        CrashLog("[CAutosave::Finish] %s: %s\n", m_File.c_str(), std::strerror(iFault));
    }
    return iFault == 0;
}

bool CAutosave::Wait()
{
    int iStatus = 0;
    if (m_Child <= 0)
    {
        return true;
    }
    while (::waitpid(m_Child, &iStatus, 0) < 0 && errno == EINTR)
    {
    }
    return Finish(iStatus);
}

void CAutosave::Remove()
{
    Wait();
    if (!m_File.empty())
    {
        RemoveFiles(m_File);
        m_File.clear();
    }
    for (const std::string& strFile : m_Recovered)
    {
        RemoveFiles(strFile);
    }
    m_Recovered.clear();
    m_CopiedRevision = 0;
    m_bModified = false;
}

std::vector<SRecoverable> CAutosave::FindRecoverable(const std::vector<std::string>& levels)
{
    std::vector<std::string> folders = {GetStateAutosaveFolder()};
    for (const std::string& strLevel : levels)
    {
        const std::string strFolder =
            (std::filesystem::path(strLevel).parent_path() / AUTOSAVE_FOLDER).string();
        if (std::find(folders.begin(), folders.end(), strFolder) == folders.end())
        {
            folders.push_back(strFolder);
        }
    }
    std::vector<SRecoverable> found;
    for (const std::string& strFolder : folders)
    {
        FindAutosaves(strFolder, found);
    }
    std::stable_sort(found.begin(),
                     found.end(),
                     [](const SRecoverable& a, const SRecoverable& b)
                     { return a.iWritten > b.iWritten; });
    return found;
}

bool CAutosave::Recover(const SRecoverable& entry)
{
    if (!m_Document.OpenRecovered(entry.level, entry.strHeightFile.c_str()))
    {
        return false;
    }
    Remove();
    m_Recovered.push_back(entry.strFile);
    m_Generation = m_Document.GetGeneration();
    m_bModified = true;
    m_Due = TimePoint::clock::now() + m_Interval;
    return true;
}

void CAutosave::Discard(const SRecoverable& entry)
{
    RemoveFiles(entry.strFile);
}
