#include "editor/core/CPluginLoader.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/KeptFiles.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginBrushes.h"
#include "host/Log.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

namespace
{

constexpr uint32_t PLUGIN_INDEX = 0;

// The loader looks for a name without a folder in the system's folders; a path never means that.
std::string GetAbsolutePath(const char* pszPath)
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(pszPath, error);
    return error ? std::string(pszPath) : path.string();
}

std::string TakeLoaderError()
{
    const char* pszError = dlerror();
    std::string strError = pszError != nullptr ? pszError : "unknown error";
    std::replace(strError.begin(), strError.end(), '\n', ' ');
    return strError;
}

} // namespace

CPluginLoader::CPluginLoader(CEditorHost& host)
    : m_Host(host)
{
}

CPluginLoader::~CPluginLoader()
{
    Unload();
}

bool CPluginLoader::Load(const char* pszLibrary)
{
    if (!Open(pszLibrary))
    {
        return false;
    }
    Start();
    return true;
}

bool CPluginLoader::Open(const char* pszLibrary)
{
    if (m_Library != nullptr)
    {
        CrashLog("[CPluginLoader::Load] a plug-in is loaded already\n");
        return false;
    }
    if (pszLibrary == nullptr || *pszLibrary == '\0')
    {
        CrashLog("[CPluginLoader::Load] no library path\n");
        return false;
    }
    // With RTLD_NOW a library that lacks a symbol is refused here and fails in no stroke.
    m_Library = dlopen(GetAbsolutePath(pszLibrary).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (m_Library == nullptr)
    {
        CrashLog("[CPluginLoader::Load] cannot open plug-in %s: %s\n",
                 pszLibrary,
                 TakeLoaderError().c_str());
        return false;
    }
    const auto pInitializeMe = reinterpret_cast<FInitializeMe>(dlsym(m_Library, "InitializeMe"));
    if (pInitializeMe == nullptr)
    {
        CrashLog("[CPluginLoader::Load] %s is no plug-in: it exports no InitializeMe\n",
                 pszLibrary);
        CloseLibrary();
        return false;
    }
    m_Plugin = pInitializeMe(&m_Host, PLUGIN_INDEX, &m_Host.GetEngine());
    if (m_Plugin == nullptr)
    {
        CrashLog("[CPluginLoader::Load] InitializeMe of %s gave no plug-in\n", pszLibrary);
        // The plug-in may have handed over something before it failed.
        m_Host.DestroyPluginObjects();
        CloseLibrary();
        return false;
    }
    return true;
}

void CPluginLoader::Start()
{
    m_bStarted = true;
    m_Plugin->RegisterActions();
    m_Plugin->Initialize();
    // What the plug-in could not read of its brushes is kept before a save can replace it.
    if (auto* pBrushes = dynamic_cast<IPluginBrushes*>(m_Plugin))
    {
        KeepFaultyBrushes(*pBrushes);
    }
    m_Host.LoadSettings();
    if (m_Host.GetSettings().IsPanelOpen())
    {
        m_Plugin->Activate(true);
    }
}

void CPluginLoader::Unload()
{
    if (m_bStarted)
    {
        // Stroke, mode and settings come to their end while the plug-in still works; what the host
        // has of it goes after its last call and before its code.
        m_Host.GetInput().EndDrag();
        m_Host.GetModes().ForceDeactivate();
        m_Host.SaveSettings();
        m_Host.ClosePluginView(); // its window is the plug-in's code
        m_Plugin->Shutdown();
    }
    if (m_Plugin != nullptr)
    {
        m_Plugin->OnHostNotify(NOTIFY_HOST_GOES, 0);
        m_Host.DestroyPluginObjects();
        m_Plugin = nullptr;
        m_bStarted = false;
    }
    CloseLibrary();
}

void CPluginLoader::CloseLibrary()
{
    if (m_Library != nullptr && dlclose(m_Library) != 0)
    {
        CrashLog("[CPluginLoader::Unload] %s\n", TakeLoaderError().c_str());
    }
    m_Library = nullptr;
}
