#pragma once

#include <functional>
#include <string>

class CDocumentQuestions;
class CEditor;

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
    void Export();
    void ExportStl();

private:
    CEditor& m_Editor;
    CDocumentQuestions& m_Questions;
    std::function<bool()> m_MayLeave;
    std::function<void()> m_OnLevel;
};
