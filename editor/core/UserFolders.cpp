#include "editor/core/UserFolders.h"

#include <cstdlib>

namespace
{

std::string GetFolder(const char* pszVariable, const char* pszInHome)
{
    const char* pszFolder = std::getenv(pszVariable);
    if (pszFolder != nullptr && *pszFolder == '/') // others do not count
    {
        return std::string(pszFolder) + "/tellur";
    }
    const char* pszHome = std::getenv("HOME");
    return std::string(pszHome != nullptr ? pszHome : "") + pszInHome + "/tellur";
}

} // namespace

std::string GetUserConfigFolder()
{
    return GetFolder("XDG_CONFIG_HOME", "/.config");
}

std::string GetUserDataFolder()
{
    return GetFolder("XDG_DATA_HOME", "/.local/share");
}

std::string GetUserStateFolder()
{
    return GetFolder("XDG_STATE_HOME", "/.local/state");
}
