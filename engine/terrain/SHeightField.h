#pragma once

#include "engine/terrain/CVertexProtection.h"
#include "engine/terrain/SGeoTags.h"
#include "host/Export.h"
#include "host/HostTypes.h"
#include "host/LargeMemory.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

// The heights of a terrain and what they mean: uSizeX x uSizeZ vertices, row-major, index
// z * uSizeX + x, terrain units. Moved, not copied: the largest one is a gigabyte.
struct SHeightField
{
    struct SFree
    {
        void operator()(float* pMemory) const { std::free(pMemory); }
    };

    uint32_t uSizeX = 0;
    uint32_t uSizeZ = 0;
    SVec3 size; // as it was given, components may be negative
    std::unique_ptr<float[], SFree> pHeights;
    CVertexProtection protection; // of these vertices, or of no terrain: nothing is protected
    SGeoTags geo; // of these vertices; whoever makes other ground of them leaves it unknown

    size_t GetCount() const { return static_cast<size_t>(uSizeX) * uSizeZ; }

    // All heights 0. False when the memory is not there; the field is then empty. The zero pages
    // cost nothing until they are written. They are huge where the system has such: a copy of the
    // process for an autosave then takes no time that a person sees.
    bool Allocate(uint32_t uVerticesX, uint32_t uVerticesZ)
    {
        const size_t nCount = static_cast<size_t>(uVerticesX) * uVerticesZ;
        pHeights.reset(static_cast<float*>(std::calloc(nCount, sizeof(float))));
        UseHugePages(pHeights.get(), nCount * sizeof(float));
        uSizeX = pHeights ? uVerticesX : 0;
        uSizeZ = pHeights ? uVerticesZ : 0;
        return pHeights != nullptr;
    }
};

// Whether a terrain can have this many vertices and this size vector.
TELLUR_API bool IsTerrainSizeValid(uint32_t uSizeX, uint32_t uSizeZ);
TELLUR_API bool IsSizeVectorValid(const SVec3& size);
