#include "engine/terrain/CProtectionEdit.h"

#include "engine/terrain/CTerrain.h"

#include <utility>

namespace
{

using Square = CVertexProtection::Square;
using SquareRef = CVertexProtection::SquareRef;

bool IsSame(const SquareRef& square, const SquareRef& other)
{
    return square == other || (square != nullptr && other != nullptr && *square == *other);
}

} // namespace

CProtectionEdit::CProtectionEdit(CTerrain& terrain)
    : m_Terrain(terrain)
    , m_IdBefore(terrain.GetProtection().GetId())
{
}

const CVertexProtection& CProtectionEdit::GetProtection() const
{
    return m_Terrain.GetProtection();
}

Square CProtectionEdit::GetBits(uint32_t uSquareX, uint32_t uSquareZ) const
{
    const SquareRef square = GetProtection().GetSquare(uSquareX, uSquareZ);
    return square != nullptr ? *square : Square{};
}

void CProtectionEdit::Set(uint32_t uSquareX, uint32_t uSquareZ, const Square& bits)
{
    CVertexProtection& protection = m_Terrain.GetProtection();
    SquareRef after = protection.MakeSquare(uSquareX, uSquareZ, bits);
    const SquareRef now = protection.GetSquare(uSquareX, uSquareZ);
    if (!IsSame(now, after))
    {
        // What was there before the first change is what an undo brings back.
        m_Before.try_emplace(uint64_t{uSquareZ} * protection.GetSquaresX() + uSquareX, now);
        protection.SetSquare(uSquareX, uSquareZ, std::move(after));
    }
}

std::vector<SProtectedSquare> CProtectionEdit::Take()
{
    std::vector<SProtectedSquare> changed;
    changed.reserve(m_Before.size());
    const uint32_t uSquaresX = GetProtection().GetSquaresX();
    for (auto& [uPlace, before] : m_Before)
    {
        const auto uX = static_cast<uint32_t>(uPlace % uSquaresX);
        const auto uZ = static_cast<uint32_t>(uPlace / uSquaresX);
        SquareRef after = GetProtection().GetSquare(uX, uZ);
        if (!IsSame(before, after))
        {
            changed.push_back({uX, uZ, std::move(before), std::move(after)});
        }
    }
    m_Before.clear();
    return changed;
}

void CProtectionEdit::TakeBack()
{
    CVertexProtection& protection = m_Terrain.GetProtection();
    for (auto& [uPlace, before] : m_Before)
    {
        protection.SetSquare(static_cast<uint32_t>(uPlace % protection.GetSquaresX()),
                             static_cast<uint32_t>(uPlace / protection.GetSquaresX()),
                             std::move(before));
    }
    protection.SetId(m_IdBefore);
    m_Before.clear();
}
