#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// What the header text of a ".npy" file says, such as
// {'descr': '<i2', 'fortran_order': False, 'shape': (344, 403), }
struct SNpyHeader
{
    std::string strType;
    bool bFortranOrder = false;
    std::vector<uint64_t> shape;
};

// Reads the text; each of the three keys must be there once and no other. False when it is not such
// a text.
bool ParseNpyHeader(std::string_view strText, SNpyHeader& header);
