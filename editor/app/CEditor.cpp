#include "editor/app/CEditor.h"

#include "editor/core/UserFolders.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace
{

constexpr char SETTINGS_FILE[] = "settings.txt";
constexpr char KEYS_FILE[] = "keys.txt";
constexpr char RECENT_FILE[] = "recent.txt";
constexpr char TOOLS_FILE[] = "tools.brushes";

} // namespace

CEditor::CEditor(IHostFace& face, std::string strConfigFolder)
    : m_ConfigFolder(std::move(strConfigFolder))
    , m_Host(face)
    , m_Loader(m_Host)
    , m_Document(m_Host)
    , m_Follower(m_Host, m_Document)
    , m_ToolBrushes(m_Host)
    , m_Autosave(m_Host, m_Document)
    , m_RecentFiles(GetConfigFile(RECENT_FILE))
{
    std::error_code error; // without the folder each file says why it cannot be written
    std::filesystem::create_directories(m_ConfigFolder, error);
    m_Host.GetLevelHeights().SetScratchBase(GetUserStateFolder() + "/scratch");
    m_Host.GetSettings().SetFile(GetConfigFile(SETTINGS_FILE).c_str());
    m_Keys.Load(GetConfigFile(KEYS_FILE));
}

CEditor::~CEditor()
{
    UnloadPlugin();
}

bool CEditor::LoadPlugin(const std::string& strLibrary)
{
    if (!m_Loader.Load(strLibrary.c_str()))
    {
        return false;
    }
    m_Keys.AddActions(m_Host.GetRegistry().GetActions(), "");
    m_Recorder = std::make_unique<CRecorder>(m_Host, GetPlugin());
    m_Autosave.SetPlugin(GetPlugin());
    m_BrushFile.Begin(GetPlugin());
    return true;
}

void CEditor::BeginTools(std::function<bool()> isScriptPlayed)
{
    m_ToolBrushes.Begin(GetPlugin(), GetConfigFile(TOOLS_FILE), std::move(isScriptPlayed));
}

void CEditor::UnloadPlugin()
{
    m_ToolBrushes.End();
    // They hold interfaces of the plug-in.
    m_Recorder.reset();
    m_Autosave.SetPlugin(nullptr);
    m_BrushFile.End();
    m_Loader.Unload();
}

std::string CEditor::GetConfigFile(const char* pszName) const
{
    return m_ConfigFolder + "/" + pszName;
}

bool CEditor::SaveKeys()
{
    return m_Keys.Save(GetConfigFile(KEYS_FILE));
}
