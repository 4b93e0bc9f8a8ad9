#pragma once

#include <cstddef>
#include <memory>

// A drag needs two arrays as large as the terrain. Fresh memory of that size costs more than
// copying the heights into it, so the arrays of the last drag are kept for the next one.

struct SHeightBuffer
{
    std::unique_ptr<float[]> pHeights; // owned, not initialised
    size_t nCapacity = 0;              // floats
};

// An array of at least nCount floats; none when there is no memory.
SHeightBuffer TakeHeightBuffer(size_t nCount);
// Keeps the array for a later Take of its size or less, two at most; the smaller ones go.
void GiveHeightBufferBack(SHeightBuffer buffer);
// Frees what is kept, for when the level closes.
void FreeHeightBuffers();
// Floats kept now.
size_t GetKeptHeightCount();
