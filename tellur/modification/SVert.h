#pragma once

// One vertex of a working set. Positions are terrain units; weight is 0 until a brush sets it.
struct SVert
{
    float x = 0.0F; // ix * step x
    float y = 0.0F; // height; what functions rewrite
    float z = 0.0F; // iz * step z
    int ix = 0;     // grid column
    int iz = 0;     // grid row
    float weight = 0.0F;
};
