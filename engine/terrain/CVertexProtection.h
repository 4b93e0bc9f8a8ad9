#pragma once

#include "host/Export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

// Which vertices of a terrain strokes leave alone: a bit a vertex, in squares of 64 x 64 that are
// there only where something is protected. Squares never change once they are made, so copies and
// steps of a history share them. Two protections with the same id are the same; the id of one that
// protects nothing is 0.
class TELLUR_API CVertexProtection
{
public:
    static constexpr uint32_t SIDE = 64; // vertices of a square

    // A word a row, the lowest bit its first vertex; bits beyond the terrain are 0.
    using Square = std::array<uint64_t, SIDE>;
    using SquareRef = std::shared_ptr<const Square>; // null: nothing of it is protected

    CVertexProtection() = default; // of no terrain
    // Protects nothing of a terrain of so many vertices.
    CVertexProtection(uint32_t uSizeX, uint32_t uSizeZ);

    bool IsEmpty() const { return m_Used == 0; }

    uint64_t GetId() const { return m_Id; }

    uint32_t GetSizeX() const { return m_SizeX; } // vertices

    uint32_t GetSizeZ() const { return m_SizeZ; }

    uint32_t GetSquaresX() const { return (m_SizeX + SIDE - 1) / SIDE; }

    uint32_t GetSquaresZ() const { return (m_SizeZ + SIDE - 1) / SIDE; }

    // Both numbers lie inside.
    SquareRef GetSquare(uint32_t uSquareX, uint32_t uSquareZ) const;

    // Borrowed until the protection changes; null also where there is no such square.
    const uint64_t* FindRows(uint32_t uSquareX, uint32_t uSquareZ) const
    {
        const size_t nPlace = size_t{uSquareZ} * GetSquaresX() + uSquareX;
        return uSquareX < GetSquaresX() && nPlace < m_Squares.size() && m_Squares[nPlace] != nullptr
                   ? m_Squares[nPlace]->data()
                   : nullptr;
    }

    bool IsProtected(uint32_t uX, uint32_t uZ) const
    {
        const uint64_t* pRows = FindRows(uX / SIDE, uZ / SIDE);
        return pRows != nullptr && ((pRows[uZ % SIDE] >> (uX % SIDE)) & 1U) != 0;
    }

    // The bits of row uZ of the terrain in one square.
    uint64_t GetRow(uint32_t uSquareX, uint32_t uZ) const
    {
        const uint64_t* pRows = FindRows(uSquareX, uZ / SIDE);
        return pRows != nullptr ? pRows[uZ % SIDE] : 0;
    }

    size_t GetCount() const; // protected vertices; looks at all of them

    // All bits of the square that lie on the terrain.
    Square GetWholeSquare(uint32_t uSquareX, uint32_t uSquareZ) const;

    // Makes the bits, of which those beyond the terrain do not count, a square to hand to
    // SetSquare: null when none is set, shared with others when all are.
    SquareRef MakeSquare(uint32_t uSquareX, uint32_t uSquareZ, const Square& bits) const;

    // Both numbers lie inside. Gives the protection another id.
    void SetSquare(uint32_t uSquareX, uint32_t uSquareZ, SquareRef square);

    // For a step of a history that has brought these very squares back.
    void SetId(uint64_t uId) { m_Id = IsEmpty() ? 0 : uId; }

    // The same ground in other numbers of vertices: each takes over what the nearest one has.
    CVertexProtection Resampled(uint32_t uSizeX, uint32_t uSizeZ) const;

private:
    uint32_t m_SizeX = 0;
    uint32_t m_SizeZ = 0;
    std::vector<SquareRef> m_Squares; // by rows; empty before the first one
    size_t m_Used = 0;                // of them, not null
    uint64_t m_Id = 0;
};
