#include "editor/app/CDocumentActions.h"

#include "editor/app/CEditor.h"
#include "editor/app/CNewLevelDialog.h"
#include "editor/app/FileChoice.h"
#include "editor/app/ReplaceQuestion.h"
#include "editor/core/FileBackup.h"
#include "editor/core/Words.h"
#include "engine/terrain/HeightFile.h"
#include "host/Notice.h"

#include <QFileInfo>
#include <QMessageBox>

#include <utility>

namespace
{

constexpr const char* LEVEL_FILTER = TextKey("Levels (*.level *.height)");

bool IsLevel(const std::string& strPath)
{
    const QString strSuffix = QFileInfo(QString::fromStdString(strPath)).suffix().toLower();
    return strSuffix == "level" || strSuffix == "height";
}

} // namespace

CDocumentActions::CDocumentActions(QWidget& window,
                                   CEditor& editor,
                                   CMessagesDock& messages,
                                   CProgressWindow& progress,
                                   std::function<void()> onLevel)
    : m_Editor(editor)
    , m_OnLevel(std::move(onLevel))
    , m_Questions(window, editor, messages, progress)
    , m_Exchange(
          editor, m_Questions, [this] { return MayLeave(); }, m_OnLevel)
    , m_Recovery(editor, m_Questions, m_OnLevel)
{
}

void CDocumentActions::New()
{
    if (!MayLeave())
    {
        return;
    }
    CNewLevelDialog dialog(&m_Questions.GetWindow());
    if (dialog.exec() != QDialog::Accepted)
    {
        return;
    }
    const bool bMade =
        m_Editor.GetDocument().New(dialog.GetCells(), dialog.GetSize(), dialog.GetHeight());
    if (m_Questions.Report(bMade, Words("The level cannot be made.")))
    {
        // Only now is the level before really gone.
        m_Editor.GetAutosave().Remove();
        m_OnLevel();
    }
}

void CDocumentActions::Open()
{
    const std::string strPath = m_Questions.AskForFile(
        false, Words("Open"), QString(Words(LEVEL_FILTER)) + ";;" + GetHeightMapFilter());
    if (!strPath.empty())
    {
        OpenFile(strPath);
    }
}

bool CDocumentActions::OpenFile(const std::string& strPath)
{
    if (!IsLevel(strPath))
    {
        return m_Exchange.ImportFile(strPath);
    }
    if (!MayLeave())
    {
        return false;
    }
    // What an interrupted run has left of this level may come in place of its file.
    if (m_Recovery.OfferOf(strPath))
    {
        m_Editor.GetRecentFiles().Add(
            QFileInfo(QString::fromStdString(strPath)).absoluteFilePath().toStdString());
        return true;
    }
    CLevelDocument& document = m_Editor.GetDocument();
    const bool bOpen =
        document.Open(strPath.c_str()) || (TakeBackup() && document.Open(strPath.c_str()));
    if (!m_Questions.Report(bOpen, Words("The level cannot be opened.")))
    {
        m_Editor.GetRecentFiles().Remove(strPath);
        return false;
    }
    OnOpened(strPath);
    return true;
}

bool CDocumentActions::TakeBackup()
{
    const std::string strHeights = m_Editor.GetDocument().GetMissingHeights();
    const std::string strBackup = strHeights.empty() ? "" : FindHeightBackup(strHeights);
    if (strBackup.empty())
    {
        return false;
    }
    QMessageBox box(
        QMessageBox::Question,
        Words("Open"),
        QString(Words("%1\nis missing. %2 has the heights from before its resolution was "
                      "changed. Use them?"))
            .arg(QString::fromStdString(strHeights),
                 QFileInfo(QString::fromStdString(strBackup)).fileName()),
        QMessageBox::Yes | QMessageBox::No,
        &m_Questions.GetWindow());
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes && PutBackFile(strBackup, strHeights);
}

void CDocumentActions::OnOpened(const std::string& strPath)
{
    m_Editor.GetAutosave().Remove();
    m_Editor.GetRecentFiles().Add(
        QFileInfo(QString::fromStdString(strPath)).absoluteFilePath().toStdString());
    m_OnLevel();
}

bool CDocumentActions::Save()
{
    CLevelDocument& document = m_Editor.GetDocument();
    if (document.GetPath().empty())
    {
        return SaveAs();
    }
    // The stroke under the hand is saved as a whole.
    m_Editor.GetHost().GetInput().EndDrag();
    switch (AskToReplace(&m_Questions.GetWindow(), document.FindReplaced()))
    {
    case EReplaceAnswer::Replace:
        return FinishSave([&document] { return document.Save(); });
    case EReplaceAnswer::Elsewhere:
        return SaveAs();
    default:
        return false;
    }
}

bool CDocumentActions::FinishSave(const std::function<bool()>& save)
{
    const CSaveNotice notice;
    const bool bDone = save();
    const CLevelDocument& document = m_Editor.GetDocument();
    if (bDone)
    {
        notice.Say(document.GetPath().c_str(), document.GetHeightPath().c_str());
    }
    const std::string& strOutcome = document.GetSaveOutcome();
    if (m_Questions.Report(
            bDone, Words("The level cannot be saved. ") + QString::fromStdString(strOutcome)))
    {
        m_Editor.GetAutosave().Remove();
        m_Editor.GetRecentFiles().Add(document.GetPath());
    }
    return bDone;
}

bool CDocumentActions::SaveAs()
{
    CLevelDocument& document = m_Editor.GetDocument();
    if (!document.HasLevel())
    {
        return false;
    }
    m_Editor.GetHost().GetInput().EndDrag();
    EReplaceAnswer eAnswer = EReplaceAnswer::Elsewhere;
    std::string strPath;
    while (eAnswer == EReplaceAnswer::Elsewhere)
    {
        strPath = m_Questions.AskForFile(true, Words("Save level as"), Words("Levels (*.level)"));
        // The dialog has asked about this very name already.
        eAnswer = strPath.empty() ? EReplaceAnswer::Cancel
                                  : AskToReplace(&m_Questions.GetWindow(),
                                                 document.FindReplaced(strPath.c_str(), true));
    }
    return eAnswer == EReplaceAnswer::Replace &&
           FinishSave([&] { return document.SaveAs(strPath.c_str()); });
}

void CDocumentActions::ChooseMaterial()
{
    const std::string strPath =
        m_Questions.AskForFile(false, Words("Material"), Words("Materials (*.mat)"));
    if (!strPath.empty())
    {
        m_Editor.GetDocument().SetMaterial(MakeRootRelative(strPath));
        m_OnLevel();
    }
}

void CDocumentActions::ChooseBitmap()
{
    const std::string strPath =
        m_Questions.AskForFile(false, Words("Terrain-type bitmap"), GetPictureFilter());
    if (!strPath.empty())
    {
        m_Editor.GetDocument().SetBitmap(MakeRootRelative(strPath));
        m_OnLevel();
    }
}

QString CDocumentActions::GetTitle() const
{
    return Words(m_Editor.GetDocument().GetTitle().c_str());
}

bool CDocumentActions::MayLeave()
{
    // The stroke under the hand is a change, too, once it has ended.
    m_Editor.GetHost().GetInput().EndDrag();
    if (!m_Editor.GetDocument().IsModified())
    {
        return true;
    }
    switch (m_Questions.AskToSave(GetTitle()))
    {
    case QMessageBox::Save:
        return Save();
    case QMessageBox::Discard: // the autosave stays until the level is really gone
        return true;
    default:
        return false;
    }
}
