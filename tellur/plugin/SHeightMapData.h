#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

// A square grid of heights between two resolutions of a terrain. Never copied: the largest one is a
// gigabyte.
struct SHeightMapData
{
    // All heights 0. heights stays null for no vertices and when there is no memory.
    explicit SHeightMapData(uint32_t uSize)
        : size(uSize)
        , heights(uSize > 0 ? new (std::nothrow) float[size_t{uSize} * uSize]() : nullptr)
    {
    }

    virtual ~SHeightMapData() = default;
    SHeightMapData(const SHeightMapData&) = delete;
    SHeightMapData& operator=(const SHeightMapData&) = delete;

    const float* GetRow(uint32_t uRow) const { return heights.get() + size_t{uRow} * size; }

    float* GetRow(uint32_t uRow) { return heights.get() + size_t{uRow} * size; }

    uint32_t size;                    // vertices per side
    std::unique_ptr<float[]> heights; // index row * size + column
};
