#include "editor/app/CFaultReport.h"

#include "editor/app/CEditor.h"
#include "editor/autosave/AutosaveFiles.h"
#include "editor/core/Words.h"
#include "host/CommandLine.h"
#include "host/FileSystem.h"
#include "host/Log.h"

#include <QFile>
#include <QFileInfo>

namespace
{

constexpr char PACKED_FOLDER[] = "fault-report/";

// Empty for one that cannot be read: what else there is goes along.
std::string ReadWhole(const std::string& strFile)
{
    QFile file(QString::fromStdString(strFile));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

} // namespace

CFaultReport::CFaultReport(CEditor& editor, const QString& strSystem)
{
    const CLevelDocument& document = editor.GetDocument();
    Add("system.txt",
        Words("versions, and what draws"),
        std::string("Tellur ") + GetProgramVersion() + '\n' + strSystem.toStdString());
    Add("log.txt", Words("what was logged since the start"), editor.GetLog().GetText());
    if (document.HasLevel())
    {
        Add("level.txt",
            Words("the level's text, as a save would write it"),
            document.GetText().Write());
        AddAutosave(editor);
    }
    // First, so that whoever unpacks it finds it.
    m_Files.insert(
        m_Files.begin(),
        {PACKED_FOLDER + std::string("contents.txt"), m_Contents.join('\n').toStdString() + '\n'});
}

void CFaultReport::Add(const std::string& strName,
                       const char* pszWhat,
                       const std::string& strContent)
{
    m_Files.push_back({PACKED_FOLDER + strName, strContent});
    m_Contents << QString(Words("%1: %2, %3 bytes"))
                      .arg(QString::fromStdString(strName), pszWhat)
                      .arg(strContent.size());
}

void CFaultReport::AddAutosave(CEditor& editor)
{
    const std::string& strStem = editor.GetAutosave().GetStem();
    if (strStem.empty())
    {
        return;
    }
    // Their own names can be long; what they belong to is in the text.
    Add("autosave.txt", Words("what the steps stand on"), ReadWhole(GetAutosaveText(strStem)));
    for (const uint32_t uNumber : ListAutosaveJournals(strStem))
    {
        Add("steps-" + std::to_string(uNumber) + ".tellur",
            Words("steps that are not saved"),
            ReadWhole(GetAutosaveJournal(strStem, uNumber)));
    }
}

bool CFaultReport::Write(const std::string& strFile) const
{
    const std::string strPacked = MakeTarGz(m_Files);
    fs::file file;
    const bool bDone = !strPacked.empty() && file.open(strFile.c_str(), fs::mode_write) &&
                       file.write(strPacked.data(), strPacked.size()) == strPacked.size() &&
                       file.close();
    if (!bDone && !strPacked.empty())
    {
        CrashLog("[CFaultReport::Write] %s\n", file.last_error().get_error_text());
    }
    return bDone;
}
