#pragma once

#include "engine/elevation/CExportRows.h"
#include "host/FileSystem.h"

// Each writes a whole file of its format into one that is open and empty; the caller closes it. A
// write fault sticks in the file. False with the fault when there is another one.

bool WriteRaw(fs::file& file, CExportRows& rows, const SExportPlan& plan); // r16, r32, hgt
bool WriteNpy(fs::file& file, CExportRows& rows, const SExportPlan& plan); // float32
bool WriteAsciiGrid(fs::file& file, CExportRows& rows, const SExportPlan& plan);
bool WriteTiff(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& strFault);

// Opens and closes the file itself. False when the reason is logged.
bool WriteGreyPng(const char* pszPath, CExportRows& rows);
