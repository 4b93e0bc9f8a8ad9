#pragma once

#include "host/Reflection.h"

// Field values in files, little-endian and without padding: numbers, vectors, enumerations and flag
// sets as they are in memory; a bool as one byte, 0 or 1; a string as its length (uint32_t) and its
// bytes; a pointer as one byte, 1 when there is an object, and its identifier (int32_t); a pointer
// list as its count (uint32_t) and its pointers.

// Writes the value. pValue: the member, of the C++ type that belongs to eType. False on a fault of
// the file.
bool SaveFieldValue(fs::file& file, ERTTIType eType, const void* pValue);

// Reads the value. False, with the member as it was, when the file ends early or holds no value of
// the type: a number that is not finite, an unknown enumeration value, an object that is not there
// or of the wrong class.
bool LoadFieldValue(fs::file& file, const CRTTIField& field, void* pValue);
