#pragma once

#include <QStringList>

#include <cstdint>
#include <functional>
#include <string>

class CDocumentQuestions;
class CEditor;
class CImportSource;
enum class EImportAs;
struct SExportTarget;
struct SImportOptions;
struct STargetChoice;

// What a person does with heights in the formats of other programs. Owned by CDocumentActions;
// everything given is borrowed. UI thread.
class CHeightExchange
{
public:
    // mayLeave: as CDocumentActions::MayLeave. onLevel: the level has come, or has other heights.
    CHeightExchange(CEditor& editor,
                    CDocumentQuestions& questions,
                    std::function<bool()> mayLeave,
                    std::function<void()> onLevel);

    void Import(); // asks for the file
    // Asks what is to become of the file and imports it. False when it cannot be imported, or the
    // person keeps the present level.
    bool ImportFile(const std::string& strPath);
    void Export(); // for a target of the table, or by the name of the file
    void ExportStl();

private:
    bool Take(CImportSource& source, const SImportOptions& options, EImportAs eAs);
    void ExportForTarget(const SExportTarget& target, const STargetChoice& choice);
    void ExportByName();
    bool AskToSave(const QStringList& lines, bool bReplaces);

    CEditor& m_Editor;
    CDocumentQuestions& m_Questions;
    std::function<bool()> m_MayLeave;
    std::function<void()> m_OnLevel;
};
