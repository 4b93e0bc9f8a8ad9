#pragma once

#include <cstddef>
#include <string>
#include <vector>

// Heights as a text that gives every bit back: 8 hexadecimal digits each, the highest bits first.
std::string MakeHeightText(const float* pHeights, size_t nCount);
// Reads such a text back. False for any other text, and for what is no finite number.
bool ReadHeightText(const char* pszText, std::vector<float>& heights);
