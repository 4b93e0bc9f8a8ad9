#pragma once

#include <QMessageBox>
#include <QString>

#include <functional>
#include <string>

class CEditor;
class CMessagesDock;
class CProgressWindow;
class QWidget;

// What a person is asked and told in the same way whatever is done with a document: which file,
// whether to keep what is not saved, and what went wrong. Owned by CDocumentActions; everything
// given is borrowed. UI thread.
class CDocumentQuestions
{
public:
    CDocumentQuestions(QWidget& window,
                       CEditor& editor,
                       CMessagesDock& messages,
                       CProgressWindow& progress);

    QWidget& GetWindow() { return m_Window; } // for more to ask

    // Asks for a file and answers its path, empty when the person has cancelled. For a file to
    // write, it also asks about one that would be replaced, unless bConfirm is false: the caller
    // then asks about all files at once.
    std::string
    AskForFile(bool bSave, const QString& strTitle, const QString& strFilter, bool bConfirm = true);
    // The folder where dialogs start that name a file to write.
    std::string GetSaveFolder() const;

    // Shows the fault with the last message, unless the work was done or the person has cancelled
    // it. Returns bDone.
    bool Report(bool bDone, const QString& strFault);

    // As CProgressWindow::TakeCancelled.
    bool TakeCancelled();

    // The last line of the messages, for who shows a fault in a dialog of its own.
    QString GetLastMessage() const;

    // Asks whether the changes of what has this name are to be saved. Answers Save, Discard or
    // Cancel.
    QMessageBox::StandardButton AskToSave(const QString& strName);
    // Asks that about something by its name. save: what Save does; strFault is shown when that
    // fails. False: the person wants to go on with it.
    bool
    MayDrop(const QString& strName, const QString& strFault, const std::function<bool()>& save);

private:
    QWidget& m_Window;
    CEditor& m_Editor;
    CMessagesDock& m_Messages;
    CProgressWindow& m_Progress;
};
