#pragma once

#include "engine/terrain/SHeightField.h"

class CScratchFolder;

// The heights of a terrain that is not the open one: in a file without a name, so that a gigabyte
// of them takes no memory, or in memory where no such file can be written.
class CHeightStore
{
public:
    CHeightStore() = default;
    ~CHeightStore();
    CHeightStore(const CHeightStore&) = delete;
    CHeightStore& operator=(const CHeightStore&) = delete;

    // Takes these heights over, in place of what is held.
    void Put(SHeightField&& field, CScratchFolder& folder);
    // What Put was given, bit for bit; held on until the next Put unless it was in memory. False,
    // with one logged line, and field is as it was, when there is no memory or the file cannot be
    // read.
    bool Take(SHeightField& field);

    size_t GetMemory() const; // bytes

private:
    bool Write(const SHeightField& field, CScratchFolder& folder);
    void Close();

    SHeightField m_Field; // sizes only while the heights are in the file
    int m_File = -1;
};
