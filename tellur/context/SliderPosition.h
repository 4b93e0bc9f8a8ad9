#pragma once

// The position of a slider that a computed place stands for, in the panel and in the draw dialog:
// truncated towards zero, and kept to what no slider reaches, so that it fits an int. What is no
// number is 0.
inline int TruncateToPosition(float fPlace)
{
    constexpr float LIMIT = 1.0e6F;
    return fPlace > -LIMIT && fPlace < LIMIT ? static_cast<int>(fPlace)
           : fPlace >= LIMIT                 ? static_cast<int>(LIMIT)
                                             : 0;
}
