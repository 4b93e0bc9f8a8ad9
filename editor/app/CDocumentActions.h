#pragma once

#include <QString>

#include <functional>
#include <string>
#include <vector>

class CEditor;
class CMessagesDock;
class CProgressWindow;
class QWidget;
struct SRecoverable;

// What a person does with levels and their files: asks, calls the document, and says what went
// wrong. Owned by the window; everything given is borrowed. UI thread.
class CDocumentActions
{
public:
    // onLevel: another level is open.
    CDocumentActions(QWidget& window,
                     CEditor& editor,
                     const CMessagesDock& messages,
                     CProgressWindow& progress,
                     std::function<void()> onLevel);

    void New();
    void Open(); // asks for the file
    // A level or a height map of any known format. False when it cannot be opened, or the person
    // keeps the present level.
    bool OpenFile(const std::string& strPath);
    bool Save(); // false when it was not saved
    bool SaveAs();
    void Import();
    void Export();
    void ExportStl();
    void ChooseMaterial();
    void ChooseBitmap();
    void ToggleRecording();

    // Where dialogs start that name a file to write.
    std::string GetSaveFolder() const;

    // Asks about changes that are not saved. False: the person wants to go on with the level.
    bool MayLeave();

    // The same about something else by its name. save: what Save does; strFault is shown when that
    // fails.
    bool
    MayDrop(const QString& strName, const QString& strFault, const std::function<bool()>& save);

    // What gives a level back that an interrupted run has left; false after a logged line.
    void SetRecover(std::function<bool(const SRecoverable&)> recover)
    {
        m_Recover = std::move(recover);
    }

    // Offers what runs that did not end properly have left, and says where recordings are that they
    // cut off. True when a level was recovered.
    bool OfferRecovery();

private:
    bool Offer(const SRecoverable& entry);
    bool OfferRecoveryOf(const std::string& strLevel);
    bool FinishSave(const std::function<bool()>& save); // says how it went
    int AskToSave(const QString& strName);              // QMessageBox::StandardButton
    bool ImportFile(const std::string& strPath);
    // Offers the backup where the height map of the level that could not be opened is missing. True
    // when it was put back.
    bool TakeBackup();
    // Shows the fault with the last message, unless the person has cancelled the work.
    bool Report(bool bDone, const QString& strFault);
    std::string AskForFile(bool bSave, const QString& strTitle, const QString& strFilter);
    void OnOpened(const std::string& strPath);

    QWidget& m_Window;
    CEditor& m_Editor;
    const CMessagesDock& m_Messages;
    CProgressWindow& m_Progress;
    std::function<void()> m_OnLevel;
    std::function<bool(const SRecoverable&)> m_Recover;
    std::vector<std::string> m_Later; // stems that the person was asked about
};
