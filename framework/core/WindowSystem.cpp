#include "framework/core/IWindowSystem.h"
#include "host/Log.h"

#include <dlfcn.h>

#include <string>

namespace
{

constexpr const char* LIBRARY = "libtellur_widgets_qt.so";

// Set by the library itself, by a static object of it: while it is opened below, or before main in
// a program that is linked with it.
IWindowSystem* g_WindowSystem = nullptr;

// The folder of the file that this code is in, with a final slash; "" where that has no name.
std::string GetOwnFolder()
{
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&OpenWindowSystem), &info) == 0 ||
        info.dli_fname == nullptr)
    {
        return {};
    }
    const std::string strFile = info.dli_fname;
    return strFile.substr(0, strFile.rfind('/') + 1); // "" without a slash
}

void OpenLibrary()
{
    const std::string strPath = GetOwnFolder() + LIBRARY;
    if (dlopen(strPath.c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr)
    {
        const char* pszFault = dlerror();
        CrashLog("[OpenWindowSystem] %s\n", pszFault != nullptr ? pszFault : strPath.c_str());
    }
    // It was loaded but has registered elsewhere: it found another framework library than this one.
    else if (g_WindowSystem == nullptr)
    {
        CrashLog("[OpenWindowSystem] %s: belongs to another framework\n", strPath.c_str());
    }
}

} // namespace

IWindowSystem* OpenWindowSystem()
{
    // One try only: every window, text and colour would repeat the fault in the log.
    static bool s_bTried = false;
    if (g_WindowSystem == nullptr && !s_bTried)
    {
        s_bTried = true;
        OpenLibrary();
    }
    return g_WindowSystem;
}

void RegisterWindowSystem(IWindowSystem* pSystem)
{
    g_WindowSystem = pSystem;
}
