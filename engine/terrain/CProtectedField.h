#pragma once

#include "engine/terrain/SHeightField.h"
#include "host/Export.h"
#include "host/ITerrainProtection.h"

#include <utility>

// The heights of a terrain, and which of them are to stay as they are. Base of the terrain.
class TELLUR_API CProtectedField : public ITerrainProtection
{
public:
    const uint64_t* GetProtectedRows(int32_t iSquareX, int32_t iSquareZ) const override;

    // Which vertices SetHeights, SetBlockHeights and the tools that ask leave alone; SetRowHeights
    // does not. It goes with the field. Whoever changes it ends a drag that runs before.
    CVertexProtection& GetProtection() { return m_Field.protection; }

    const CVertexProtection& GetProtection() const { return m_Field.protection; }

    // Where it lies on a map; goes with the field, too.
    const SGeoTags& GetGeoTags() const { return m_Field.geo; }

    void SetGeoTags(SGeoTags geo) { m_Field.geo = std::move(geo); }

protected:
    explicit CProtectedField(SHeightField&& field);
    ~CProtectedField() override = default;
    CProtectedField(const CProtectedField&) = delete;
    CProtectedField& operator=(const CProtectedField&) = delete;

    // Takes another field, and gives the one of before.
    SHeightField Exchange(SHeightField&& field);

    SHeightField m_Field;

private:
    void AdaptProtection();
};
