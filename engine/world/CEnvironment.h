#pragma once

#include "host/World.h"

#include <string>

// The level's environment: where its heights come from and the terrain made of them. Owned by the
// world, there exactly while a level is open.
class CEnvironment final : public IEnvironment
{
public:
    const char* GetHeightMapName() const override { return m_HeightMapName.c_str(); }

    Terrain* GetTerrain() const override { return m_Terrain; }

    // strName: empty for a level that was never saved.
    void SetHeightMapName(std::string strName) { m_HeightMapName = std::move(strName); }

    void SetTerrain(Terrain* pTerrain) { m_Terrain = pTerrain; } // borrowed

private:
    std::string m_HeightMapName;
    Terrain* m_Terrain = nullptr;
};
