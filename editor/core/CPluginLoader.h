#pragma once

#include "host/IPlugin.h"

class CEditorHost;

// Opens one plug-in library, starts the plug-in on a host and takes it down again, in the order of
// calls that IPlugin states. Owned by the program and destroyed before the host. A host runs one
// plug-in at a time.
class CPluginLoader
{
public:
    explicit CPluginLoader(CEditorHost& host); // borrowed
    ~CPluginLoader();                          // as Unload
    CPluginLoader(const CPluginLoader&) = delete;
    CPluginLoader& operator=(const CPluginLoader&) = delete;

    // pszLibrary: path of the shared library. False with one logged line when a plug-in is loaded
    // already, the library cannot be opened, lacks InitializeMe, or gives no plug-in.
    bool Load(const char* pszLibrary);
    // The first half of it: the library is open and its object can be asked what it offers, but
    // nothing has been registered, read or written. False after one logged line.
    bool Open(const char* pszLibrary);
    // The other half, after Open.
    void Start();
    // Leaves the current mode, saves the settings, shuts the plug-in down, destroys what the host
    // has of it and closes the library. Nothing without a plug-in.
    void Unload();

    IPlugin* GetPlugin() const { return m_Plugin; } // null when none is loaded

private:
    void CloseLibrary();

    CEditorHost& m_Host;
    void* m_Library = nullptr; // of dlopen
    IPlugin* m_Plugin = nullptr;
    bool m_bStarted = false;
};
