#include "tellur/modification/HeightChanges.h"

#include "tellur/modification/HeightPass.h"

#include <bit>

size_t FindChanges(const CHeightTiles& tiles,
                   const std::function<void(int iTileX, int iTileZ)>& onTraces)
{
    const FnRowChanges findChanges = GetRowChanges();
    size_t nChanged = 0;
    tiles.ForEach(
        [&](SHeightTile& tile, int iTileX, int iTileZ)
        {
            tile.uChanged = 0;
            tile.aChanged.fill(0);
            bool bTraces = false;
            for (int z = 0; tile.bWritten && z < SHeightTile::SIDE; ++z)
            {
                const int iPlace = z * SHeightTile::SIDE;
                tile.aChanged[z] =
                    findChanges(tile.aSource.data() + iPlace, tile.aDest.data() + iPlace, bTraces);
                tile.uChanged += static_cast<uint32_t>(std::popcount(tile.aChanged[z]));
            }
            if (bTraces)
            {
                onTraces(iTileX, iTileZ);
            }
            nChanged += tile.uChanged;
        });
    return nChanged;
}
