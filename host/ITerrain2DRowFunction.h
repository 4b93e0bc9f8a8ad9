#pragma once

#include <cstddef>
#include <cstdint>

// What a paint stroke does to texels that lie beside one another. A function of a stroke
// (ITerrain2DFunction, host/IPaintLayer.h) may offer it besides; the paint layer asks for it with
// dynamic_cast at each Paint and then calls it instead of Apply, once a row instead of once a
// texel. A function without it is called by Apply, and so is every function by a layer that does
// not know this. UI thread; must not call the layer.
class ITerrain2DRowFunction
{
public:
    virtual ~ITerrain2DRowFunction() = default;
    // Does to each of nCount texels what Apply does with its weight, and nothing to those whose
    // weight is not above 0. The same bytes and the same answer: true when Apply would be true for
    // one of them. pTexels: four bytes each, red first, changed in place; pWeights: one each, at
    // most 1; both borrowed. fStrength: the power of Paint.
    virtual bool
    ApplyRow(uint8_t* pTexels, const float* pWeights, size_t nCount, float fStrength) = 0;
};
