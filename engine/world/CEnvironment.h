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

    // The file that a reload reads: the level's, or the spare one of a level without a file.
    const std::string& GetReloadName() const
    {
        return m_HeightMapName.empty() ? m_SpareName : m_HeightMapName;
    }

    // strName: of a file of the program's own, where the heights of a level without a file may be
    // written. It never becomes the level's file.
    void SetSpareName(std::string strName) { m_SpareName = std::move(strName); }

    void SetTerrain(Terrain* pTerrain) { m_Terrain = pTerrain; } // borrowed

private:
    std::string m_HeightMapName;
    std::string m_SpareName;
    Terrain* m_Terrain = nullptr;
};
