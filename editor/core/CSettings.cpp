#include "editor/core/CSettings.h"

#include "editor/core/KeptFiles.h"
#include "host/FileSystem.h"
#include "host/IPlugin.h"
#include "host/Log.h"
#include "parser/TCParseFile.h"

#include <cstring>
#include <memory>

namespace
{

constexpr char PANEL_KEY[] = "panel_open";

int32_t GetInt(const CTCPARSE_KEYWORD& keyword)
{
    return keyword.params != nullptr && keyword.params->type == tcparse_int
               ? static_cast<const CTCPARSE_INT*>(keyword.params)->value
               : 0;
}

} // namespace

void CSettings::SetFile(const char* pszPath)
{
    m_Path = pszPath != nullptr ? pszPath : "";
}

bool CSettings::Register(const char* pszName,
                         uint32_t uType,
                         void* pValue,
                         const char* pszEditFlags)
{
    if (pValue == nullptr)
    {
        CrashLog("[CSettings::Register] no value\n");
        return false;
    }
    m_Settings.push_back({pszName != nullptr ? pszName : "",
                          uType,
                          pValue,
                          pszEditFlags != nullptr ? pszEditFlags : ""});
    return true;
}

void CSettings::Load(const std::vector<IPlugin*>& plugins)
{
    std::unique_ptr<CTCPARSE_KEYWORD> pFirst;
    if (!m_Path.empty())
    {
        ETCParseStatus eStatus = tcparse_done;
        pFirst.reset(
            TCParseFile(m_Path.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
        // A file that is there and cannot be read may hold settings, too, which a save must not
        // throw away.
        m_bHasError = eStatus == tcparse_failed ||
                      (eStatus == tcparse_unreadable && fs::exists(m_Path.c_str()));
    }
    for (const CTCPARSE_KEYWORD* pKeyword = pFirst.get(); pKeyword != nullptr;
         pKeyword = pKeyword->next)
    {
        if (std::strcmp(pKeyword->name, PANEL_KEY) == 0)
        {
            m_bPanelOpen = m_bPanelKept = GetInt(*pKeyword) != 0;
        }
    }
    for (IPlugin* pPlugin : plugins)
    {
        pPlugin->LoadSettings(pFirst.get());
    }
}

bool CSettings::Save(const std::vector<IPlugin*>& plugins)
{
    if (m_Path.empty())
    {
        return true;
    }
    if (m_bHasError && KeepFile(m_Path).empty())
    {
        return false; // it stays where it is
    }
    m_bHasError = false;
    fs::ifile file;
    if (file.open(m_Path.c_str(), fs::mode_write))
    {
        file.printf("!%s( i )\n\n%s( %d )\n", PANEL_KEY, PANEL_KEY, m_bPanelOpen ? 1 : 0);
        for (IPlugin* pPlugin : plugins)
        {
            pPlugin->SaveSettings(file);
        }
        if (file.close())
        {
            m_bPanelKept = m_bPanelOpen;
            return true;
        }
    }
    CrashLog("[CSettings::Save] %s\n", file.last_error().get_error_text());
    return false;
}
