#pragma once

class CPixelBuffer;

// For the sources of this folder. Scales a picture of 32 bits with opacity in the fourth byte
// smoothly: smaller by the average of what falls on a pixel, larger by interpolation; one colour
// stays exactly that colour, and transparent pixels do not bleed into their neighbours. At the same
// size it is a copy. Answers false and keeps scaled as it is for a side below 1 or when memory is
// short.
bool ScalePicture(const CPixelBuffer& picture, int iWidth, int iHeight, CPixelBuffer& scaled);
