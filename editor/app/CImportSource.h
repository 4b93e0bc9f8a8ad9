#pragma once

#include "engine/elevation/HeightImport.h"
#include "engine/elevation/SExportNotes.h"
#include "engine/elevation/TileSet.h"

#include <optional>
#include <string>

// A height map that a person looks at before it becomes a level: read once, with progress, and kept
// until then. UI thread.
class CImportSource
{
public:
    explicit CImportSource(std::string strPath); // reads no more than the text beside it

    // Reads the file as what lies beside it says, or as it says itself. False as below.
    bool Read();
    // Reads the file. Of the options only the shape of a raw file counts. False, with one logged
    // line, when it cannot be read or the person cancels it; nothing is read then.
    bool Read(const SImportOptions& options);

    bool IsRead() const { return m_Report.pFormat != nullptr; }

    bool IsRaw() const; // says nothing about itself

    bool IsSet() const { return m_bSet; } // the first of several tiles

    const std::string& GetPath() const { return m_Path; }

    // "slope.png", "4 tiles of slope.png".
    std::string GetName() const;

    // What the text beside it says, where that is of this very file.
    const std::optional<SExportNotes>& GetNotes() const { return m_Notes; }

    std::string GetNotesName() const; // of that text

    const SSampleInfo& GetInfo() const { return m_Grid; }

    const SImportReport& GetReport() const { return m_Report; }

    // Few samples for a picture, as they lie in the file.
    const SSampleGrid& GetThin() const { return m_Thin; }

    float GetSample(size_t i) const { return m_Grid.samples[i]; } // NaN for a void

    SSampleGrid& GetGrid() { return m_Grid; } // to be taken

private:
    std::string GetWholePath() const { return m_bSet ? m_Tiles.strPath : m_Path; }

    std::string m_Path;
    STileSet m_Tiles;
    bool m_bSet;
    std::optional<SExportNotes> m_Notes;
    SSampleGrid m_Grid;
    SSampleGrid m_Thin;
    SImportReport m_Report;
};
