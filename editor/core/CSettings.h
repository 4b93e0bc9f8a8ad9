#pragma once

#include "host/EditorHost.h"

#include <cstdint>
#include <string>
#include <vector>

class IPlugin;

// A member of a plug-in that the settings grid edits. The value stays the plug-in's.
struct SSetting
{
    std::string strName;
    uint32_t uType = 0; // field type number of the reflection
    void* pValue = nullptr;
    std::string strEditFlags;
};

// The host's settings: what plug-ins registered for the settings grid, the host's own few values,
// and the settings file that keeps them and every plug-in's own. Owned by CEditorHost.
class CSettings
{
public:
    // Where the settings live; null or "" for nowhere (nothing is read or written then).
    void SetFile(const char* pszPath);
    // Null texts count as empty; a null address is refused.
    bool Register(const char* pszName, uint32_t uType, void* pValue, const char* pszEditFlags);

    // Forgets what was registered: the members go away with their plug-in.
    void ClearRegistered() { m_Settings.clear(); }

    // Reads the file and hands its keywords to every plug-in, null when there are none (no file, or
    // one with an error, which the parser has logged).
    void Load(const std::vector<IPlugin*>& plugins);
    // Writes the host's block, then each plug-in's. A file that Load could not understand is kept
    // first, see KeepFile. False with one logged line; the old file then stays.
    bool Save(const std::vector<IPlugin*>& plugins);

    const std::vector<SSetting>& GetRegistered() const { return m_Settings; }

    // Whether the plug-in's panel was open when the settings were last saved.
    bool IsPanelOpen() const { return m_bPanelOpen; }

    void SetPanelOpen(bool bOpen) { m_bPanelOpen = bOpen; }

    // Whether the file has it otherwise.
    bool HasPanelChanged() const { return m_bPanelOpen != m_bPanelKept; }

private:
    std::string m_Path;
    std::vector<SSetting> m_Settings;
    bool m_bPanelOpen = false;
    bool m_bPanelKept = false; // in the file
    bool m_bHasError = false;  // the file is there and was not understood
};
