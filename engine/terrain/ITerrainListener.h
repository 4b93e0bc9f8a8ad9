#pragma once

#include "engine/terrain/SHeightField.h"

// Is told when the heights of the open level meet a file. Borrowed by the world. UI thread.
class ITerrainListener
{
public:
    virtual ~ITerrainListener() = default;

    // Around Terrain::SaveHeightMap. bOwn: the terrain's own heights are written, not others.
    // OnBeforeSave: false when they must not be, which was logged; OnSaved is told then, too.
    virtual bool OnBeforeSave(const char* pszPath, bool bOwn) = 0;
    virtual void OnSaved(const char* pszPath, bool bOwn, bool bDone) = 0;

    // The level's file will be read; whatever changes the heights has to end before.
    virtual void OnBeforeReload() = 0;
    // It brought other heights or sizes than these, which were the terrain's.
    virtual void OnReloaded(SHeightField&& before) = 0;
};
