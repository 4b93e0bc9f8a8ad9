#pragma once

#include "editor/app/TarGz.h"

#include <QStringList>

#include <string>
#include <vector>

class CEditor;

// What a person sends with a fault, in one file: what the program is and has logged, the level's
// text, and the steps that are not saved. Heights and pictures are not in it. Made when it is asked
// for.
class CFaultReport
{
public:
    // strSystem: lines about the machine, which only the windows know.
    CFaultReport(CEditor& editor, const QString& strSystem);

    // One line for each file: its name and what it is.
    const QStringList& GetContents() const { return m_Contents; }

    // Packs all of it. False after a logged line.
    bool Write(const std::string& strFile) const;

private:
    void Add(const std::string& strName, const char* pszWhat, const std::string& strContent);
    void AddAutosave(CEditor& editor);

    std::vector<SPackedFile> m_Files;
    QStringList m_Contents;
};
