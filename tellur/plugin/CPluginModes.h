#pragma once

#include "host/ModeManager.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

class CModeEditTerrainType;

// The three editor modes of the plug-in, which belong to the host once they are registered, and how
// the plug-in switches between them. Every question is answered as without a mode while there is no
// host.
class CPluginModes
{
public:
    // Makes the modes. Once, when the plug-in is initialized.
    void Register(ModeManager& modes);

    int32_t GetTerraformingId() const { return m_TerraformingModeId; } // -1 before Register

    int32_t GetEditTerrainTypeId() const { return m_EditTerrainTypeModeId; }

    int32_t GetExportExtentId() const { return m_ExportExtentModeId; }

    CModeEditTerrainType* GetPaintingMode() const { return m_pEditTerrainTypeMode; } // null before

    // Asks the host to make a mode current, or to leave the current one for -1; one logged line
    // when it refuses.
    bool SetMode(int32_t iModeId, int32_t iParameter) const;
    // Switches terraforming on or off; one logged line when it is so already. Switched off, a
    // notice tells which tool was put away.
    void EnableTerraforming(bool bEnable) const;
    bool IsTerraforming() const; // it is registered and current

    bool IsGroupCurrent() const; // the current mode is of the plug-in's group

    // Finds a mode by the name that scripts have for it; nothing for an unknown name. "none" is no
    // mode, -1.
    std::optional<int32_t> FindMode(const std::string& strName) const;
    // The name of the current mode for scripts; null for one of another plug-in.
    const char* GetCurrentName() const;

private:
    struct SName
    {
        const char* pszName;
        int32_t iModeId;
    };

    std::array<SName, 4> GetNames() const;

    int32_t m_TerraformingModeId = NO_MODE;
    int32_t m_EditTerrainTypeModeId = NO_MODE;
    int32_t m_ExportExtentModeId = NO_MODE;
    CModeEditTerrainType* m_pEditTerrainTypeMode = nullptr; // the host's
};
