// Compiled for AVX2 where the compiler can; elsewhere the same as the plain form.
#define TELLUR_PASS RunTilePassAvx2
#define TELLUR_CHANGES FindRowChangesAvx2
#include "tellur/modification/HeightPass.inl"
