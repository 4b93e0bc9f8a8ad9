#pragma once

#include <string>

class CProtectionEdit;
class CVertexProtection;

// The protection of a level as a picture: 8-bit grey, a pixel a vertex, x to the right and z
// downwards; white is protected. Full paths. False after one logged line that names the file.

// A pixel from the middle grey on is protected; of colours the first channel counts. Nothing has
// changed when it fails. bResampled: a picture for another resolution of the same ground will do,
// which is as wide for its height; the nearest pixel counts.
bool ReadProtection(const std::string& strPath, CProtectionEdit& edit, bool bResampled);
bool WriteProtection(const std::string& strPath, const CVertexProtection& protection);
