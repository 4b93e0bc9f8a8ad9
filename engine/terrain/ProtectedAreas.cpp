#include "engine/terrain/ProtectedAreas.h"

#include "engine/terrain/CProtectionEdit.h"
#include "engine/terrain/CTerrain.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace
{

constexpr uint32_t SIDE = CVertexProtection::SIDE;
constexpr double RIGHT_ANGLE = 90.0;

using Square = CVertexProtection::Square;

// Columns of a row, both ends inclusive; none while iFirst is above iLast.
struct SSpan
{
    int64_t iFirst = 0;
    int64_t iLast = -1;
};

// The bits of a span in the square that begins at column uColumn.
uint64_t GetSpanBits(const SSpan& span, uint32_t uColumn)
{
    const int64_t iFirst = std::max<int64_t>(span.iFirst - uColumn, 0);
    const int64_t iLast = std::min<int64_t>(span.iLast - uColumn, SIDE - 1);
    return iFirst > iLast ? 0 : (~uint64_t{0} >> (SIDE - 1 - iLast)) & (~uint64_t{0} << iFirst);
}

// Calls setBit(column, row) for the vertices of a square that lie on the terrain.
template <typename TSet>
void ForEachVertex(const CVertexProtection& protection,
                   uint32_t uSquareX,
                   uint32_t uSquareZ,
                   TSet fn)
{
    const uint32_t uEndX = std::min((uSquareX + 1) * SIDE, protection.GetSizeX());
    const uint32_t uEndZ = std::min((uSquareZ + 1) * SIDE, protection.GetSizeZ());
    for (uint32_t z = uSquareZ * SIDE; z < uEndZ; ++z)
    {
        for (uint32_t x = uSquareX * SIDE; x < uEndX; ++x)
        {
            fn(x, z);
        }
    }
}

// By its series, since the C library's tangent differs from machine to machine in its last bit.
double GetTangent(double dDegrees)
{
    constexpr double PI = 3.14159265358979323846;
    constexpr int TERMS = 14;
    const double x = dDegrees / RIGHT_ANGLE * (PI / 2.0);
    double dSine = 0.0;
    double dCosine = 0.0;
    double dTerm = 1.0;
    for (int i = 0; i < 2 * TERMS; ++i)
    {
        const double dSigned = (i / 2) % 2 == 0 ? dTerm : -dTerm;
        (i % 2 == 0 ? dCosine : dSine) += dSigned;
        dTerm = dTerm * x / (i + 1);
    }
    return dSine / dCosine;
}

// The square of the slope at a vertex, from its neighbours on both sides.
double GetSlopeSquare(const SHeightView& view, uint32_t uX, uint32_t uZ)
{
    const uint32_t uLeft = uX > 0 ? uX - 1 : 0;
    const uint32_t uRight = std::min(uX + 1, view.uSizeX - 1);
    const uint32_t uUpper = uZ > 0 ? uZ - 1 : 0;
    const uint32_t uLower = std::min(uZ + 1, view.uSizeZ - 1);
    const auto getHeight = [&](uint32_t x, uint32_t z)
    {
        return static_cast<double>(view.pHeights[size_t{z} * view.uSizeX + x]);
    };
    const double dX = (getHeight(uRight, uZ) - getHeight(uLeft, uZ)) /
                      (static_cast<double>(view.fStepX) * (uRight - uLeft));
    const double dZ = (getHeight(uX, uLower) - getHeight(uX, uUpper)) /
                      (static_cast<double>(view.fStepZ) * (uLower - uUpper));
    return dX * dX + dZ * dZ;
}

// A row of a square with those of the squares on its left and on its right, which no growth leaves.
using Window = std::array<uint64_t, 3>;

Window ShiftUp(const Window& row, uint32_t uBy) // by less than SIDE
{
    return {row[0] << uBy,
            row[1] << uBy | row[0] >> (SIDE - uBy),
            row[2] << uBy | row[1] >> (SIDE - uBy)};
}

Window ShiftDown(const Window& row, uint32_t uBy)
{
    return {row[0] >> uBy | row[1] << (SIDE - uBy),
            row[1] >> uBy | row[2] << (SIDE - uBy),
            row[2] >> uBy};
}

// The middle of a row whose bits have spread by so many columns to both sides.
uint64_t SpreadRow(Window row, uint32_t uBy)
{
    // What has spread by n may be moved by up to 2 n + 1 without leaving a gap.
    for (uint32_t uDone = 0; uDone < uBy;)
    {
        const uint32_t uStep = std::min({uBy - uDone, 2 * uDone + 1, SIDE - 1});
        const Window up = ShiftUp(row, uStep);
        const Window down = ShiftDown(row, uStep);
        for (size_t i = 0; i < row.size(); ++i)
        {
            row[i] |= up[i] | down[i];
        }
        uDone += uStep;
    }
    return row[1];
}

bool HasNeighbours(const CVertexProtection& protection, uint32_t uSquareX, uint32_t uSquareZ)
{
    bool bAny = false;
    for (uint32_t z = uSquareZ > 0 ? uSquareZ - 1 : 0; z <= uSquareZ + 1 && !bAny; ++z)
    {
        for (uint32_t x = uSquareX > 0 ? uSquareX - 1 : 0; x <= uSquareX + 1 && !bAny; ++x)
        {
            bAny = protection.FindRows(x, z) != nullptr;
        }
    }
    return bAny;
}

// widths: how far a row spreads, by its distance from the row that it spreads to.
void GrowSquare(const CVertexProtection& before,
                const std::vector<uint32_t>& widths,
                uint32_t uSquareX,
                uint32_t uSquareZ,
                Square& bits)
{
    const auto iReach = static_cast<int64_t>(widths.size()) - 1;
    for (uint32_t z = uSquareZ * SIDE; z < (uSquareZ + 1) * SIDE; ++z)
    {
        const int64_t iFirst = std::max<int64_t>(int64_t{z} - iReach, 0);
        const int64_t iLast = std::min<int64_t>(int64_t{z} + iReach, before.GetSizeZ() - 1);
        for (int64_t i = iFirst; i <= iLast; ++i)
        {
            const auto uRow = static_cast<uint32_t>(i);
            const Window row = {uSquareX > 0 ? before.GetRow(uSquareX - 1, uRow) : 0,
                                before.GetRow(uSquareX, uRow),
                                before.GetRow(uSquareX + 1, uRow)};
            const auto nAway = static_cast<size_t>(i < z ? z - i : i - z);
            if ((row[0] | row[1] | row[2]) != 0)
            {
                bits[z % SIDE] |= SpreadRow(row, widths[nAway]);
            }
        }
    }
}

// Protects the vertices that are as wanted, too; the others stay as they are.
template <typename TWanted> void ProtectWhere(CProtectionEdit& edit, TWanted isWanted)
{
    edit.ChangeAll(
        [&](uint32_t uSquareX, uint32_t uSquareZ, Square& bits)
        {
            ForEachVertex(edit.GetProtection(),
                          uSquareX,
                          uSquareZ,
                          [&](uint32_t x, uint32_t z)
                          { bits[z % SIDE] |= uint64_t{isWanted(x, z)} << (x % SIDE); });
        });
}

} // namespace

void ProtectDisc(CProtectionEdit& edit, float fX, float fZ, float fRadius, bool bProtected)
{
    const SHeightView view = edit.GetTerrain().GetView();
    const SVertexRect rect = edit.GetTerrain().GetVertexRect(
        {{fX - fRadius, 0.0F, fZ - fRadius}, {fX + fRadius, 0.0F, fZ + fRadius}});
    if (!(fRadius >= 0.0F) || rect.IsEmpty())
    {
        return;
    }
    std::vector<SSpan> spans(rect.uEndZ - rect.uMinZ);
    for (uint32_t z = rect.uMinZ; z < rect.uEndZ; ++z)
    {
        const double dAway = static_cast<double>(view.fStepZ) * z - static_cast<double>(fZ);
        const double dSquare =
            static_cast<double>(fRadius) * static_cast<double>(fRadius) - dAway * dAway;
        if (dSquare >= 0.0)
        {
            const double dHalf = std::sqrt(dSquare);
            const double dX = fX;
            const double dStep = view.fStepX;
            spans[z - rect.uMinZ] = {
                static_cast<int64_t>(std::max(std::ceil((dX - dHalf) / dStep), 0.0)),
                static_cast<int64_t>(
                    std::min(std::floor((dX + dHalf) / dStep), view.uSizeX - 1.0))};
        }
    }
    edit.Change(rect,
                [&](uint32_t uSquareX, uint32_t uSquareZ, Square& bits)
                {
                    const uint32_t uFirst = std::max(uSquareZ * SIDE, rect.uMinZ);
                    const uint32_t uEnd = std::min((uSquareZ + 1) * SIDE, rect.uEndZ);
                    for (uint32_t z = uFirst; z < uEnd; ++z)
                    {
                        const uint64_t uSpan = GetSpanBits(spans[z - rect.uMinZ], uSquareX * SIDE);
                        uint64_t& uRow = bits[z % SIDE];
                        uRow = bProtected ? uRow | uSpan : uRow & ~uSpan;
                    }
                });
}

void InvertProtection(CProtectionEdit& edit)
{
    edit.ChangeAll(
        [](uint32_t, uint32_t, Square& bits)
        {
            for (uint64_t& uRow : bits)
            {
                uRow = ~uRow;
            }
        });
}

void ClearProtection(CProtectionEdit& edit)
{
    edit.ChangeAll([](uint32_t, uint32_t, Square& bits) { bits.fill(0); });
}

void GrowProtection(CProtectionEdit& edit, uint32_t uVertices)
{
    // What has grown must not grow again: the squares of before are read, the table of them shared.
    const CVertexProtection before = edit.GetProtection();
    const uint32_t uReach = std::min(uVertices, MOST_GROWTH);
    std::vector<uint32_t> widths;
    for (uint32_t uAway = 0; uAway <= uReach; ++uAway)
    {
        const double dSquare = static_cast<double>(uReach * uReach - uAway * uAway);
        widths.push_back(static_cast<uint32_t>(std::sqrt(dSquare)));
    }
    edit.ChangeAll(
        [&](uint32_t uSquareX, uint32_t uSquareZ, Square& bits)
        {
            if (HasNeighbours(before, uSquareX, uSquareZ))
            {
                GrowSquare(before, widths, uSquareX, uSquareZ, bits);
            }
        });
}

void ProtectSteep(CProtectionEdit& edit, float fDegrees)
{
    const SHeightView view = edit.GetTerrain().GetView();
    const double dSlope = GetTangent(std::clamp(static_cast<double>(fDegrees), 0.0, RIGHT_ANGLE));
    // The series may end a little beside a right angle, which no ground is steeper than.
    const double dSteep = static_cast<double>(fDegrees) >= RIGHT_ANGLE ? HUGE_VAL : dSlope * dSlope;
    ProtectWhere(edit, [&](uint32_t x, uint32_t z) { return GetSlopeSquare(view, x, z) > dSteep; });
}

void ProtectHeights(CProtectionEdit& edit, float fLowest, float fHighest)
{
    const SHeightView view = edit.GetTerrain().GetView();
    ProtectWhere(edit,
                 [&](uint32_t x, uint32_t z)
                 {
                     const float fHeight = view.pHeights[size_t{z} * view.uSizeX + x];
                     return fHeight >= fLowest && fHeight <= fHighest;
                 });
}
