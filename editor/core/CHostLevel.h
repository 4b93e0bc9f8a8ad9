#pragma once

#include "editor/core/CLevelHeights.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <string>

class CChangeCount;
class CHostInput;
class CHostObservers;
class CHostProtection;
class CPluginRegistry;
class CHostHistory;
class CWorld;

// Has the plug-ins and the observers go along when the level or its terrain becomes another one: a
// drag that runs is ended and the plug-ins let go of the world before, and they are told
// afterwards. Owned by CEditorHost. UI thread.
class CHostLevel : private ITerrainKeeper
{
public:
    // Borrowed. strScratch: as for CLevelHeights.
    CHostLevel(CWorld& world,
               CHostHistory& history,
               const CPluginRegistry& registry,
               CHostInput& input,
               CHostObservers& observers,
               CHostProtection& protection,
               CChangeCount& changes,
               const std::string& strScratch);
    CHostLevel(const CHostLevel&) = delete;
    CHostLevel& operator=(const CHostLevel&) = delete;

    // Makes a new flat level, or opens the level of a ".height" file; this empties the undo stack.
    // False with one logged line; the level before stays.
    bool New(uint32_t uCells, const SVec3& size);
    bool Open(const char* pszPath);
    // Makes a level with these heights, which must be valid ones (see CTerrain), and no file.
    void Take(SHeightField&& field);

    // To be called when a plug-in has had the height map read again and wants everybody to see it.
    void TellReloaded();

    // The open level's heights as a whole, and what its file holds of them.
    CLevelHeights& GetHeights() { return m_Heights; }

private:
    void Prepare();
    void Finish();

    // ITerrainKeeper
    bool IsTerrainHeld() const override;
    void OnBeforeReplacement(bool bByPlugin) override;
    void OnReplaced(EReplacement eBy) override;

    CWorld& m_World;
    CHostHistory& m_History;
    const CPluginRegistry& m_Registry;
    CHostInput& m_Input;
    CHostObservers& m_Observers;
    CHostProtection& m_Protection;
    CChangeCount& m_Changes;
    CLevelHeights m_Heights;
    bool m_bReplaced = false; // by the last reload, and the observers have been told
};
