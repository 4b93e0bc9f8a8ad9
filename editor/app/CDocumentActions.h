#pragma once

#include "editor/app/CDocumentQuestions.h"
#include "editor/app/CHeightExchange.h"
#include "editor/app/CRecoveryOffer.h"

#include <functional>
#include <string>

class CEditor;
class CMessagesDock;
class CProgressWindow;
class QWidget;

// What a person does with levels and their files: asks, calls the document, and says what went
// wrong. Other formats and what an interrupted run has left are its parts' matter. Owned by the
// window; everything given is borrowed. UI thread.
class CDocumentActions
{
public:
    // onLevel: another level is open.
    CDocumentActions(QWidget& window,
                     CEditor& editor,
                     CMessagesDock& messages,
                     CProgressWindow& progress,
                     std::function<void()> onLevel);

    void New();
    void Open(); // asks for the file
    // Opens a level or a height map of any known format. False when it cannot be opened, or the
    // person keeps the present level.
    bool OpenFile(const std::string& strPath);
    bool Save(); // false when it was not saved
    bool SaveAs();
    void ChooseMaterial();
    void ChooseBitmap();

    // Asks about changes that are not saved. False: the person wants to go on with the level.
    bool MayLeave();

    QString GetTitle() const; // of the level, as windows and questions have it

    CDocumentQuestions& GetQuestions() { return m_Questions; }

    CHeightExchange& GetExchange() { return m_Exchange; }

    CRecoveryOffer& GetRecovery() { return m_Recovery; }

private:
    bool FinishSave(const std::function<bool()>& save); // says how it went
    // Offers the backup where the height map of the level that could not be opened is missing. True
    // when it was put back.
    bool TakeBackup();
    void OnOpened(const std::string& strPath);

    CEditor& m_Editor;
    std::function<void()> m_OnLevel;
    CDocumentQuestions m_Questions;
    CHeightExchange m_Exchange;
    CRecoveryOffer m_Recovery;
};
