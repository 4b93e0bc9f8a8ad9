#pragma once

#include "host/HostTypes.h"

#include <memory>
#include <string>

class CTerrainModification;
class ITexture;

// Whether the terrain shows the current brush's mask and the edit material.
enum class EEditOverlay
{
    Off,
    On,
};

// What sculpting holds beyond one call: the drag that runs, the point under the cursor, the picture
// of the brush that the views project there, and the material that the terrain wears meanwhile. The
// plug-in object owns it, because a drag ends without its mode when the level or the host goes;
// GetTerraformingState reaches it.
class CTerraformingState
{
public:
    CTerraformingState();
    ~CTerraformingState(); // drops the drag; the preview has to be given back before
    CTerraformingState(const CTerraformingState&) = delete;
    CTerraformingState& operator=(const CTerraformingState&) = delete;

    // The session of a new drag, which has not started yet. One that was not released is dropped:
    // its heights stay, it leaves no undo record.
    CTerrainModification& MakeSession();

    // Borrowed until the next MakeSession or DropSession; null when there is none.
    CTerrainModification* GetSession() const { return m_pSession.get(); }

    bool IsDragging() const; // there is a session and it runs
    void DropSession();

    // The terrain point under the cursor, terrain units.
    const SVec3& GetPicked() const { return m_Picked; }

    bool HasPicked() const { return !(m_Picked.x < 0.0F); }

    void SetPicked(const SVec3& picked) { m_Picked = picked; }

    void ForgetPicked() { m_Picked = {-1.0F, -1.0F, -1.0F}; }

    // Made by the world from the current brush's image, where that has changed since the last call.
    // Borrowed until it is made anew or released; null without a brush, an image or a world.
    ITexture* UpdatePreview();

    ITexture* GetPreview() const { return m_pPreview; }

    void ReleasePreview(); // gives it back to the world; the next frame makes a new one

    // Names the material that the terrain wears while it is edited; null for none. It shows at once
    // while terraforming.
    void SetEditMaterial(const char* pszName);

    const std::string& GetEditMaterial() const { return m_EditMaterial; }

    // Take the edit material and the overlay off the terrain, or put them on it for the brush that
    // is current now; without a brush they are taken off. Nothing happens without a terrain.
    static void TakeOverlayAway();
    void ApplyOverlay(EEditOverlay eOverlay) const;

    // To be called before the terrain goes: drops the drag and gives the preview back, so that
    // nothing here points into it afterwards.
    void ForgetLevel();

private:
    std::unique_ptr<CTerrainModification> m_pSession;
    ITexture* m_pPreview = nullptr; // the world's
    SVec3 m_Picked = {-1.0F, -1.0F, -1.0F};
    std::string m_EditMaterial;
};

// The plug-in object's. Only while there is one.
CTerraformingState& GetTerraformingState();

bool IsTerraformingOn(); // it is the host's current mode
