#pragma once

#include "engine/terrain/CVertexProtection.h"
#include "engine/terrain/SVertexRect.h"
#include "host/Export.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

class CTerrain;

// A square of a protection that has changed.
struct SProtectedSquare
{
    uint32_t uX = 0; // of the square
    uint32_t uZ = 0;
    CVertexProtection::SquareRef before;
    CVertexProtection::SquareRef after;
};

// Changes the protection of a terrain square by square, and keeps in mind what it was. Costs what
// it changes. The terrain is borrowed and keeps its size meanwhile.
class TELLUR_API CProtectionEdit
{
public:
    explicit CProtectionEdit(CTerrain& terrain);

    // Gives a square other bits; those beyond the terrain do not count.
    void Set(uint32_t uSquareX, uint32_t uSquareZ, const CVertexProtection::Square& bits);

    // Lets each square that has vertices in rect, which lies on the terrain, become what change
    // makes of its bits: change(square x, square z, bits).
    template <typename TChange> void Change(const SVertexRect& rect, TChange change)
    {
        constexpr uint32_t SIDE = CVertexProtection::SIDE;
        for (uint32_t z = rect.uMinZ / SIDE; !rect.IsEmpty() && z * SIDE < rect.uEndZ; ++z)
        {
            for (uint32_t x = rect.uMinX / SIDE; x * SIDE < rect.uEndX; ++x)
            {
                CVertexProtection::Square bits = GetBits(x, z);
                change(x, z, bits);
                Set(x, z, bits);
            }
        }
    }

    template <typename TChange> void ChangeAll(TChange change)
    {
        Change({0, 0, GetProtection().GetSizeX(), GetProtection().GetSizeZ()}, change);
    }

    const CTerrain& GetTerrain() const { return m_Terrain; }

    const CVertexProtection& GetProtection() const;

    // What has changed since the edit began, in no order; squares that are as they were are left
    // out. The edit is over.
    std::vector<SProtectedSquare> Take();

    // Brings back what was there when the edit began, which is over then.
    void TakeBack();

    uint64_t GetIdBefore() const { return m_IdBefore; }

private:
    CVertexProtection::Square GetBits(uint32_t uSquareX, uint32_t uSquareZ) const;

    CTerrain& m_Terrain;
    uint64_t m_IdBefore;
    std::unordered_map<uint64_t, CVertexProtection::SquareRef> m_Before; // by place
};
