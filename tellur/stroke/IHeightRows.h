#pragma once

// Heights of a drag by rows: what loops over many vertices read.
class IHeightRows
{
public:
    virtual ~IHeightRows() = default;

    // iCount heights of row iZ from column iX on, all on the terrain. Borrowed until the heights
    // are next written, or until pScratch is, which has room for them: they are put together there
    // when they do not lie side by side.
    virtual const float* GetRow(int iX, int iZ, int iCount, float* pScratch) const = 0;
};
