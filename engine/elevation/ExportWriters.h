#pragma once

#include "engine/elevation/CExportRows.h"
#include "engine/elevation/SElevationFormat.h"
#include "host/FileSystem.h"

// The writers of the formats, as SElevationFormat says.

// r16, r32, hgt: the samples alone, in the type and the byte order of the plan.
bool WriteRaw(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& strFault);
bool WriteNpy(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& strFault);
bool WriteAsciiGrid(fs::file& file,
                    CExportRows& rows,
                    const SExportPlan& plan,
                    std::string& strFault);
bool WriteTiff(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& strFault);

// Floats of 32 or of 16 bits, without loss of what the plan gives.
bool WriteExr(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& strFault);

bool SaveGreyPng(const char* pszPath,
                 const SSampleView& heights,
                 const SVec3& size,
                 const SExportPlan& plan);
