// Which form of the tile pass this processor gets.

#include "host/VectorLoop.h"
#include "tellur/modification/HeightPass.h"

FnTilePass GetTilePass()
{
    return UseAvx2() ? &RunTilePassAvx2 : &RunTilePassPlain;
}

FnRowChanges GetRowChanges()
{
    return UseAvx2() ? &FindRowChangesAvx2 : &FindRowChangesPlain;
}
