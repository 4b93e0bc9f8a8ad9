#include "engine/terrain/CProtectedField.h"

static_assert(CVertexProtection::SIDE == ITerrainProtection::SIDE);

CProtectedField::CProtectedField(SHeightField&& field)
    : m_Field(std::move(field))
{
    AdaptProtection();
}

const uint64_t* CProtectedField::GetProtectedRows(int32_t iSquareX, int32_t iSquareZ) const
{
    return m_Field.protection.FindRows(static_cast<uint32_t>(iSquareX),
                                       static_cast<uint32_t>(iSquareZ));
}

SHeightField CProtectedField::Exchange(SHeightField&& field)
{
    SHeightField before = std::exchange(m_Field, std::move(field));
    AdaptProtection();
    return before;
}

// A field that says nothing of it, as one that was read from a file, protects nothing.
void CProtectedField::AdaptProtection()
{
    CVertexProtection& protection = m_Field.protection;
    if (protection.GetSizeX() != m_Field.uSizeX || protection.GetSizeZ() != m_Field.uSizeZ)
    {
        protection = CVertexProtection(m_Field.uSizeX, m_Field.uSizeZ);
    }
}
