#define TELLUR_PASS RunTilePassPlain
#define TELLUR_CHANGES FindRowChangesPlain
#include "tellur/modification/HeightPass.inl"
