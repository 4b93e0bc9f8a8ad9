#pragma once

#include <QImage>

#include <cstdint>
#include <span>
#include <string>

// Reads a picture with Qt's decoder of the named format, from memory and without an application
// object. What the decoder would print goes to strComplaint instead (its first text; empty when it
// had none), also when it gave a picture all the same. Null picture on failure. The size must have
// been checked: Qt's own limit on allocations is off during the call.
QImage
ReadQtPicture(std::span<const uint8_t> Data, const char* pszFormat, std::string& strComplaint);
