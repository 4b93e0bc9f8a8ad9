#pragma once

class IImage;

// How far apart the points of a straight stroke may lie, as a share of the brush's extent, so that
// what they leave together dips between two of them by at most a hundredth of its height: as wide
// as the shape is so near to its highest value, along whichever of its axes that is less. Between
// 1/32 and 1/8, so that a pointed shape dips a little more.
// shape: square, a byte a pixel. fHardness: as the brush adds it.
float GetSpacingShare(const IImage& shape, float fHardness);
