#include "editor/script/CRecorder.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/FileNames.h"
#include "editor/core/Processes.h"
#include "editor/core/UserFolders.h"
#include "editor/script/CScriptKeywords.h"
#include "editor/script/ProtectionText.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPlugin.h"
#include "host/IPluginPainting.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "parser/DeclarativeText.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace
{

constexpr char PART_EXTENSION[] = ".part";
constexpr size_t NAME_BYTES_KEPT = 230; // leaves room for what is appended
constexpr mode_t SCRIPT_MODE = 0644;

std::string GetNotesFolder()
{
    return GetUserStateFolder() + "/recordings";
}

std::string GetFileName(const std::string& strPath)
{
    return std::filesystem::path(strPath).filename().string();
}

// Where the recording is, for the next start. A name that says it to nobody is no fault: the part
// lies beside its target.
std::string WriteNote(const std::string& strPart)
{
    const int iProcess = ::getpid();
    std::error_code error;
    std::filesystem::create_directories(GetNotesFolder(), error);
    std::string strNote =
        GetNotesFolder() + "/" + std::to_string(iProcess) + "-" + GetProcessStart(iProcess);
    ::unlink(strNote.c_str());
    const int iFile = MakeNewFile(strNote.c_str());
    if (iFile >= 0)
    {
        WriteAll(iFile, strPart.data(), strPart.size());
        ::close(iFile);
    }
    return strNote;
}

} // namespace

CRecorder::CRecorder(CEditorHost& host, IPlugin* pPlugin)
    : m_Host(host)
    , m_Painting(dynamic_cast<IPluginPainting*>(pPlugin))
    , m_Declarations(CScriptKeywords(pPlugin).GetDeclarations())
    , m_Writer(host, *this)
{
    m_Writer.SetPlugin(pPlugin);
    m_Host.GetObservers().Add(this);
}

CRecorder::~CRecorder()
{
    Stop();
    m_Host.GetObservers().Remove(this);
}

bool CRecorder::Start(const std::string& strPath)
{
    Stop();
    m_Host.GetInput().EndDrag();
    m_Host.GetProtection().End();
    m_Host.GetHistory().EndStep();
    if (!m_Writer.CanWriteStrokes() || m_Host.GetEngine().GetWorld()->GetTerrain() == nullptr)
    {
        CrashLog("[CRecorder::Start] there is no level to record\n");
        return false;
    }
    const std::filesystem::path path = strPath;
    m_Path = strPath;
    m_Prefix = (path.parent_path() / ShortenName(path.stem().string(), NAME_BYTES_KEPT)).string();
    m_Terrains = 0;
    m_Bitmaps = 0;
    m_Beside.clear();
    m_Writer.Begin();
    if (!OpenPart())
    {
        CrashLog("[CRecorder::Start] %s: %s\n", m_Part.c_str(), std::strerror(errno));
        return false;
    }
    if (Append(m_Declarations) && KeepTerrain())
    {
        m_Note = WriteNote(m_Part);
        return true;
    }
    m_bComplete = true;
    // Of a recording that could not begin nothing is left.
    m_Beside.push_back(m_Part);
    for (const std::string& strFile : m_Beside)
    {
        ::unlink(strFile.c_str());
    }
    return false;
}

bool CRecorder::OpenPart()
{
    const std::filesystem::path path = m_Path;
    const std::string strBase =
        (path.parent_path() / ShortenName(path.filename().string(), NAME_BYTES_KEPT)).string();
    m_Part = strBase + PART_EXTENSION;
    m_File = MakeNewFile(m_Part.c_str());
    for (size_t uNumber = 1; m_File < 0 && errno == EEXIST;) // another recording was cut off
    {
        m_Part = FindFreeName(strBase + ".", PART_EXTENSION, uNumber);
        m_File = MakeNewFile(m_Part.c_str());
    }
    // The file was made for its owner alone; a script is a document like any other.
    return m_File >= 0 && ::fchmod(m_File, SCRIPT_MODE) == 0;
}

bool CRecorder::Stop()
{
    if (m_File >= 0)
    {
        // The stroke under the hand belongs to the script, and so does a terrain that came after
        // its last call.
        m_Host.GetInput().EndDrag();
        m_Host.GetProtection().End();
        m_Host.GetHistory().EndStep();
        m_Writer.KeepTerrain();
    }
    if (m_File >= 0)
    {
        // Keeping the terrain may have failed and ended the script.
        m_bComplete = TakePlace();
    }
    if (!m_Note.empty())
    {
        ::unlink(std::exchange(m_Note, {}).c_str());
    }
    return std::exchange(m_bComplete, true);
}

bool CRecorder::TakePlace()
{
    // On the disk first: it takes the place of an older script.
    const bool bSynced = ::fsync(m_File) == 0;
    const bool bClosed = ::close(std::exchange(m_File, -1)) == 0;
    if (bSynced && bClosed && ::rename(m_Part.c_str(), m_Path.c_str()) == 0)
    {
        return true;
    }
    CrashLog("[CRecorder::Stop] %s: %s; the script is in %s\n",
             m_Path.c_str(),
             std::strerror(errno),
             m_Part.c_str());
    return false;
}

bool CRecorder::Append(const std::string& strText)
{
    return m_File >= 0 &&
           (WriteAll(m_File, strText.data(), strText.size()) || Fail(std::strerror(errno)));
}

bool CRecorder::Fail(const char* pszFault)
{
    CrashLog("[CRecorder] %s: %s; the script ends here\n", m_Part.c_str(), pszFault);
    ::close(std::exchange(m_File, -1));
    m_bComplete = false;
    return false;
}

bool CRecorder::KeepTerrain()
{
    const std::string strFile = FindFreeName(m_Prefix + ".", ".height", m_Terrains);
    Terrain* pTerrain = m_Host.GetEngine().GetWorld()->GetTerrain();
    if (pTerrain == nullptr || !pTerrain->SaveHeightMap(strFile.c_str(), nullptr, 0, 0))
    {
        return Fail("the terrain cannot be written beside it");
    }
    m_Beside.push_back(strFile);
    const CVertexProtection& protection =
        m_Host.GetEngine().GetCWorld().GetCTerrain()->GetProtection();
    return Append("open( " + QuoteText(GetFileName(strFile)) + " )\n" +
                  GetSquareCalls({}, protection, "protected"));
}

bool CRecorder::KeepBitmap(bool /*bKnown*/)
{
    const std::string strFile = FindFreeName(m_Prefix + ".", ".png", m_Bitmaps);
    if (!m_Painting->SaveBitmap(strFile.c_str()))
    {
        return Fail("the bitmap cannot be written beside it");
    }
    m_Beside.push_back(strFile);
    return Append("mode( \"none\" )\npaint_bitmap( " + QuoteText(GetFileName(strFile)) + " )\n");
}

void CRecorder::OnBeforeEvent(const SHostEvent& event)
{
    if (IsRecording())
    {
        m_Writer.OnBeforeEvent(event);
    }
}

void CRecorder::OnEvent(const SHostEvent& event)
{
    if (IsRecording())
    {
        m_Writer.OnEvent(event);
    }
}

void CRecorder::OnMissedEvent()
{
    if (IsRecording())
    {
        Fail("not enough memory");
    }
}

std::vector<std::string> CRecorder::TakeInterrupted()
{
    std::vector<std::string> parts;
    std::error_code error;
    for (const auto& note : std::filesystem::directory_iterator(GetNotesFolder(), error))
    {
        const std::string strName = note.path().filename().string();
        const size_t iStart = strName.find('-');
        // A recording that still runs has the number and the start of a living process in its
        // note's name.
        const std::string strRunning = GetProcessStart(std::atoi(strName.c_str()));
        if (iStart == std::string::npos ||
            (!strRunning.empty() && strRunning == strName.substr(iStart + 1)))
        {
            continue;
        }
        std::ifstream file(note.path());
        const std::string strPart{std::istreambuf_iterator<char>(file),
                                  std::istreambuf_iterator<char>()};
        if (std::filesystem::exists(strPart, error))
        {
            parts.push_back(strPart);
        }
        ::unlink(note.path().c_str());
    }
    return parts;
}
