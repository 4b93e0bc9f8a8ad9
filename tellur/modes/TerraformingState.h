#pragma once

#include "host/HostTypes.h"

#include <memory>
#include <string>

class CTerrainModification;
class ITexture;

// What the terraforming mode shares with the plug-in object and the panel; one instance.
struct STerraformingState
{
    std::unique_ptr<CTerrainModification> pSession; // the drag in progress, null when none
    ITexture* pPreview = nullptr;                   // made by the world from the brush image
    SVec3 picked = {-1.0F, -1.0F, -1.0F}; // terrain point under the cursor; x below 0: none
    std::string strEditMaterial;          // terrain material used while editing

    STerraformingState();
    ~STerraformingState();
    STerraformingState(const STerraformingState&) = delete;
    STerraformingState& operator=(const STerraformingState&) = delete;
};

STerraformingState& GetTerraformingState();

// Gives the brush preview back to the world; the next frame makes a new one.
void ReleaseBrushPreview();

// Shows the current brush's mask and the edit material on the terrain, or takes both away.
enum class EEditOverlay
{
    Off,
    On,
};
void ApplyEditOverlay(EEditOverlay eOverlay);

bool IsTerraformingOn(); // it is the host's current mode

// The terrain material used while editing, null for none; shown at once while terraforming.
void SetEditMaterialName(const char* pszName);
