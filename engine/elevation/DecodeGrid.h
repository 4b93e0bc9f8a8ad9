#pragma once

#include "engine/elevation/SSampleGrid.h"

#include <cstdint>
#include <new>
#include <span>
#include <string>
#include <utility>

// Runs a decoder of whole files over the bytes and hands out its grid. False with its fault, also
// when memory runs out; grid is then as it was.
template <typename TDecoder>
bool DecodeGrid(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    try
    {
        TDecoder decoder(bytes);
        if (decoder.Decode())
        {
            grid = std::move(decoder.GetGrid());
            return true;
        }
        strFault = decoder.GetFault();
    }
    catch (const std::bad_alloc&)
    {
        strFault = "not enough memory";
    }
    return false;
}
