#pragma once

#include "host/HostTypes.h"

#include <cstdint>

class CEditorHost;
class CTerrain;
struct SHostEvent;

// Whether the files of the open level hold what is in memory. Heights count by the step of the undo
// stack that they were saved at, so what is undone back to it is saved again; what no step takes
// back counts until the next save. Owned by the document, which hands it the events of the host.
// UI thread.
class CLevelChanges
{
public:
    explicit CLevelChanges(CEditorHost& host); // borrowed

    // To be called when the files have taken over what is in memory, or the other way round.
    void SetSaved();

    // To be called after a change that is not in the files and that undo does not take back.
    void SetChanged() { m_bChanged = true; }

    // bNamed: the level has a file of its own, which names the sizes of its terrain.
    bool IsModified(bool bNamed) const;

    // Grows with each SetSaved.
    uint64_t GetSavings() const { return m_Savings; }

    void OnBeforeEvent(const SHostEvent& event);
    void OnEvent(const SHostEvent& event);

private:
    // What the level file says of the heights.
    struct SSizes
    {
        uint32_t uCellsX = 0;
        uint32_t uCellsZ = 0;
        SVec3 size = {};
    };

    static bool IsSame(const SSizes& a, const SSizes& b);
    const CTerrain* GetTerrain() const; // null without a level
    uint64_t GetRevision() const;
    uint64_t GetProtection() const;
    SSizes GetSizes() const;
    void NoteChange(); // of heights that undo does not know

    CEditorHost& m_Host;
    SSizes m_SavedSizes;            // as the level file names them
    uint64_t m_KnownRevision = 0;   // of the heights, after the last change that undo knows
    uint64_t m_SavedProtection = 0; // its id
    uint64_t m_Savings = 0;
    bool m_bChanged = false; // since it was saved, in a way that undo does not take back
};
