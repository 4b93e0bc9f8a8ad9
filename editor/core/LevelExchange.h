#pragma once

#include "engine/elevation/HeightExport.h"
#include "engine/elevation/HeightImport.h"
#include "engine/elevation/TargetExport.h"

#include <string>
#include <vector>

class CEditorHost;
class CLevelDocument;

// What a level gives and takes of other formats.

enum class EImportAs
{
    NewLevel,
    ThisLevel,
};

// Makes a level without a file from a height map of another format, which counts as modified; or,
// for ThisLevel and where one is open, other heights for it, as one step of its undo stack. lines:
// what was assumed and what may disappoint, for the user. False after one logged line, and the
// level is then as it was.
bool ImportLevel(CEditorHost& host,
                 CLevelDocument& document,
                 const char* pszPath,
                 const SImportOptions& options,
                 EImportAs eAs,
                 std::vector<std::string>& lines);

// The same of a file that was read, so that what was shown of it is what comes. grid: taken.
// report: of the reading, gets what was done.
bool ImportLevel(CEditorHost& host,
                 CLevelDocument& document,
                 const char* pszPath,
                 SSampleGrid&& grid,
                 SImportReport& report,
                 const SImportOptions& options,
                 EImportAs eAs);

// An export has two steps, so that the plan's lines can be shown before anything is written. False
// after one logged line.
bool PlanLevelExport(CEditorHost& host,
                     const char* pszPath,
                     const SExportOptions& options,
                     SExportPlan& plan);
bool ExportLevel(CEditorHost& host, const char* pszPath, const SExportPlan& plan);

// The same for a target. The facts are what it can be shown by, before there is a path; all 0
// without a level.
SGroundFacts GetGroundFacts(CEditorHost& host);
bool PlanLevelExport(CEditorHost& host,
                     const std::string& strPath,
                     const SExportTarget& target,
                     const STargetChoice& choice,
                     STargetExport& made);
bool ExportLevel(CEditorHost& host, const std::string& strPath, const STargetExport& made);
