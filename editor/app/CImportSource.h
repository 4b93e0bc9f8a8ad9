#pragma once

#include "engine/elevation/HeightImport.h"

#include <string>

// A height map that a person looks at before it becomes a level: read once, with progress, and kept
// until then. UI thread.
class CImportSource
{
public:
    explicit CImportSource(std::string strPath); // nothing is read yet

    // Reads the file. Of the options only the shape of a raw file counts. False, with one logged
    // line, when it cannot be read or the person cancels it; nothing is read then.
    bool Read(const SImportOptions& options);

    bool IsRead() const { return m_Report.pFormat != nullptr; }

    bool IsRaw() const; // says nothing about itself

    const std::string& GetPath() const { return m_Path; }

    const SSampleInfo& GetInfo() const { return m_Grid; }

    const SImportReport& GetReport() const { return m_Report; }

    // Few samples for a picture, as they lie in the file.
    const SSampleGrid& GetThin() const { return m_Thin; }

    float GetSample(size_t i) const { return m_Grid.samples[i]; } // NaN for a void

    SSampleGrid& GetGrid() { return m_Grid; } // to be taken

private:
    std::string m_Path;
    SSampleGrid m_Grid;
    SSampleGrid m_Thin;
    SImportReport m_Report;
};
