#include "editor/script/CRecorder.h"

#include "editor/core/CEditorHost.h"
#include "editor/script/CScriptPlayer.h"
#include "framework/core/KeyState.h"
#include "host/FileSystem.h"
#include "host/IPluginScript.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "parser/DeclarativeText.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

namespace
{

constexpr mode_t FILE_MODE = 0644;
constexpr int32_t LAST_TERRAIN_ACTION = 2; // what follows moves the camera

// Takes what is written to it as text.
class CTextFile : public fs::ifile
{
public:
    size_t write(const void* pSource, size_t nBytes) override
    {
        m_Text.append(static_cast<const char*>(pSource), nBytes);
        return nBytes;
    }

    const std::string& GetText() const { return m_Text; }

private:
    std::string m_Text;
};

std::string GetPoint(const SVec3& point)
{
    return "[" + MakeExactNumber(point.x) + ", " + MakeExactNumber(point.y) + ", " +
           MakeExactNumber(point.z) + "]";
}

std::string GetKeys()
{
    const bool bControl = IsKeyDown(EKey::Control);
    const bool bAlt = IsKeyDown(EKey::Alt);
    return bControl && bAlt ? "ctrl+alt" : bControl ? "ctrl" : bAlt ? "alt" : "";
}

} // namespace

CRecorder::CRecorder(CEditorHost& host, IPluginScript* pPluginScript)
    : m_Host(host)
    , m_PluginScript(pPluginScript)
{
    m_Host.AddObserver(this);
}

CRecorder::~CRecorder()
{
    Stop();
    m_Host.RemoveObserver(this);
}

bool CRecorder::Start(const std::string& strPath)
{
    Stop();
    m_Host.EndDrag();
    if (m_PluginScript == nullptr || m_Host.GetEngine().GetWorld()->GetTerrain() == nullptr)
    {
        CrashLog("[CRecorder::Start] there is no level to record\n");
        return false;
    }
    m_Path = strPath;
    m_bComplete = true;
    m_Terrains = 0;
    m_Bitmaps = 0;
    m_Painted = 0;
    m_State.clear();
    m_Keys.clear();
    m_bDrag = false;
    m_File =
        ::open(strPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, FILE_MODE);
    if (m_File < 0)
    {
        CrashLog("[CRecorder::Start] %s: %s\n", strPath.c_str(), std::strerror(errno));
        return false;
    }
    return Append(CScriptPlayer::GetDeclarations()) && WriteTerrain();
}

bool CRecorder::Stop()
{
    if (m_File >= 0)
    {
        m_Host.EndDrag();
        if (m_bStale)
        {
            WriteTerrain();
        }
    }
    if (m_File >= 0)
    {
        ::close(m_File);
        m_File = -1;
    }
    return std::exchange(m_bComplete, true);
}

bool CRecorder::Append(const std::string& strText)
{
    const char* pNext = strText.c_str();
    size_t nLeft = strText.size();
    while (nLeft > 0 && m_File >= 0)
    {
        const ssize_t nWritten = ::write(m_File, pNext, nLeft);
        if (nWritten < 0 && errno == EINTR)
        {
            continue;
        }
        if (nWritten <= 0)
        {
            return Fail(std::strerror(errno));
        }
        pNext += nWritten;
        nLeft -= static_cast<size_t>(nWritten);
    }
    return m_File >= 0;
}

bool CRecorder::Fail(const char* pszFault)
{
    CrashLog("[CRecorder] %s: %s; the script ends here\n", m_Path.c_str(), pszFault);
    ::close(m_File);
    m_File = -1;
    m_bComplete = false;
    return false;
}

bool CRecorder::WriteTerrain()
{
    const std::filesystem::path script = m_Path;
    const std::string strName =
        script.stem().string() + "." + std::to_string(++m_Terrains) + ".height";
    const std::string strFile = (script.parent_path() / strName).string();
    Terrain* pTerrain = m_Host.GetEngine().GetWorld()->GetTerrain();
    if (pTerrain == nullptr || !pTerrain->SaveHeightMap(strFile.c_str(), nullptr, 0, 0))
    {
        return Fail("the terrain cannot be written beside it");
    }
    m_bStale = false;
    m_Undos = 0;
    m_Redos = 0;
    return Append("open( " + QuoteText(strName) + " )\n");
}

std::string CRecorder::ReadState()
{
    CTextFile file;
    return m_PluginScript->WriteState(file) ? file.GetText() : "";
}

bool CRecorder::CanSculpt() const
{
    const bool bSculpts = m_PluginScript->IsTerraforming() || m_PluginScript->IsPainting();
    return bSculpts && !m_PluginScript->GetFunctionName().empty();
}

bool CRecorder::WriteBitmap()
{
    const std::filesystem::path script = m_Path;
    const std::string strName = script.stem().string() + "." + std::to_string(++m_Bitmaps) + ".png";
    if (!m_PluginScript->SaveBitmap((script.parent_path() / strName).c_str()))
    {
        return Fail("the bitmap cannot be written beside it");
    }
    m_Painted = m_Host.GetCPaintLayer().GetRevision();
    m_State.clear(); // loading the bitmap sets channels and colours
    return Append("mode( \"none\" )\npaint_bitmap( " + QuoteText(strName) + " )\n");
}

void CRecorder::WriteChanges()
{
    if (m_bStale)
    {
        WriteTerrain();
    }
    if (m_PluginScript->IsPainting() && m_Painted != m_Host.GetCPaintLayer().GetRevision())
    {
        WriteBitmap();
    }
    const std::string strState = ReadState();
    if (strState != m_State)
    {
        m_State = strState;
        Append(strState);
    }
}

void CRecorder::WriteKeys()
{
    if (m_EventKeys != m_Keys)
    {
        m_Keys = m_EventKeys;
        Append("keys( " + QuoteText(m_Keys) + " )\n");
    }
}

void CRecorder::OnBeforeEvent(const SHostEvent& event)
{
    if (!IsRecording())
    {
        return;
    }
    m_EventKeys = GetKeys();
    const bool bPress = event.eKind == EHostEvent::ButtonDown;
    const bool bAction = event.eKind == EHostEvent::Action && event.iAction <= LAST_TERRAIN_ACTION;
    if ((bPress || bAction) && CanSculpt())
    {
        WriteChanges();
    }
    // A press that cannot sculpt still drops what another one began.
    m_bDrag = m_bDrag || (bPress && CanSculpt());
}

void CRecorder::OnEvent(const SHostEvent& event)
{
    if (!IsRecording())
    {
        return;
    }
    switch (event.eKind)
    {
    case EHostEvent::ButtonDown:
    case EHostEvent::MouseMove:
    case EHostEvent::ButtonUp:
        if (m_bDrag)
        {
            WriteKeys();
            WriteMouse(event);
            if (m_PluginScript->IsPainting()) // what the stroke did is in the script
            {
                m_Painted = m_Host.GetCPaintLayer().GetRevision();
            }
            m_bDrag = event.eKind != EHostEvent::ButtonUp;
        }
        break;
    case EHostEvent::Action:
        if (event.iAction <= LAST_TERRAIN_ACTION && !m_State.empty())
        {
            Append("action( " + std::to_string(event.iAction) + ", " +
                   std::to_string(event.uCount) + " )\n");
            m_State = ReadState();
        }
        break;
    case EHostEvent::Undo:
    case EHostEvent::Redo:
        WriteStep(event.eKind == EHostEvent::Redo);
        break;
    case EHostEvent::UndoAdded:
        ++m_Undos;
        m_Redos = 0;
        break;
    case EHostEvent::LevelChanged:
    case EHostEvent::TerrainReloaded:
    case EHostEvent::DragDropped: // a replay, which has the memory, would keep the stroke
        m_bStale = true;
        m_bDrag = false;
        break;
    case EHostEvent::Command:
        break; // what it changes is written before the next press
    }
}

void CRecorder::OnMissedEvent()
{
    if (IsRecording())
    {
        Fail("not enough memory");
    }
}

void CRecorder::WriteMouse(const SHostEvent& event)
{
    const bool bMove = event.eKind == EHostEvent::MouseMove;
    std::string strCall = event.eKind == EHostEvent::ButtonDown ? "press"
                          : bMove                               ? "move"
                                                                : "release";
    strCall += event.bHit ? "_at( " + GetPoint(event.hit) : "_miss(";
    if (bMove)
    {
        strCall += (event.bHit ? ", " : " ") + std::to_string(event.step.dy);
    }
    strCall += bMove || event.bHit ? " )\n" : ")\n";
    Append(strCall);
}

void CRecorder::WriteStep(bool bRedo)
{
    size_t& nFrom = bRedo ? m_Redos : m_Undos;
    size_t& nTo = bRedo ? m_Undos : m_Redos;
    if (nFrom == 0 || m_bStale)
    {
        m_bStale = true; // a step from before the script, or before its last terrain
        return;
    }
    --nFrom;
    ++nTo;
    Append(bRedo ? "redo()\n" : "undo()\n");
}
