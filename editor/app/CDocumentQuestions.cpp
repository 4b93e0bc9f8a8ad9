#include "editor/app/CDocumentQuestions.h"

#include "editor/app/CEditor.h"
#include "editor/app/CMessagesDock.h"
#include "editor/app/CProgressWindow.h"
#include "editor/app/FileChoice.h"
#include "editor/core/Words.h"

#include <QFileDialog>

CDocumentQuestions::CDocumentQuestions(QWidget& window,
                                       CEditor& editor,
                                       CMessagesDock& messages,
                                       CProgressWindow& progress)
    : m_Window(window)
    , m_Editor(editor)
    , m_Messages(messages)
    , m_Progress(progress)
{
}

bool CDocumentQuestions::Report(bool bDone, const QString& strFault)
{
    const bool bCancelled = m_Progress.TakeCancelled();
    if (!bDone && !bCancelled)
    {
        QMessageBox box(QMessageBox::Warning, "Tellur", strFault, QMessageBox::Ok, &m_Window);
        m_Messages.TakeFaultOfCall(); // this box shows it
        box.setInformativeText(m_Messages.GetLastLine());
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
    return bDone;
}

bool CDocumentQuestions::TakeCancelled()
{
    return m_Progress.TakeCancelled();
}

QString CDocumentQuestions::GetLastMessage() const
{
    m_Messages.TakeFaultOfCall(); // who asks shows it
    return m_Messages.GetLastLine();
}

std::string CDocumentQuestions::AskForFile(bool bSave,
                                           const QString& strTitle,
                                           const QString& strFilter,
                                           bool bConfirm)
{
    const std::string strLevelFolder = m_Editor.GetDocument().GetFolder();
    const bool bThere = !bSave && !strLevelFolder.empty(); // read, also where nothing can be made
    const QString strFolder = QString::fromStdString(bThere ? strLevelFolder : GetSaveFolder());
    if (!bSave)
    {
        return QFileDialog::getOpenFileName(&m_Window, strTitle, strFolder, strFilter)
            .toStdString();
    }
    // "Levels (*.level)": with one pattern there is only one suffix that a file can have.
    const bool bOne = strFilter.count('*') == 1;
    const QString strSuffix = bOne ? strFilter.section("*.", 1).section(')', 0, 0) : QString();
    return ChooseSaveFile(&m_Window, {strTitle, strFilter, strSuffix, strFolder, bConfirm});
}

std::string CDocumentQuestions::GetSaveFolder() const
{
    return ::GetSaveFolder(m_Editor.GetDocument().GetFolder());
}

QMessageBox::StandardButton CDocumentQuestions::AskToSave(const QString& strName)
{
    QMessageBox box(QMessageBox::Question,
                    Words("Unsaved changes"),
                    QString(Words("Save the changes of %1?")).arg(strName),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                    &m_Window);
    box.setDefaultButton(QMessageBox::Save);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

bool CDocumentQuestions::MayDrop(const QString& strName,
                                 const QString& strFault,
                                 const std::function<bool()>& save)
{
    switch (AskToSave(strName))
    {
    case QMessageBox::Save:
        return Report(save(), strFault);
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}
