#include "editor/app/CScriptRunner.h"

#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CStatusLine.h"
#include "editor/app/CViewArea.h"
#include "editor/script/CScriptCursor.h"
#include "editor/script/CScriptPlayer.h"
#include "parser/CTCParseNodes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMessageBox>

#include <memory>
#include <utility>

namespace
{

// Keeps presses from everybody while it is a filter of the application. What lets go passes: a key
// that was held before must not stay so.
class CPressDropper : public QObject
{
public:
    bool HasDropped() const { return m_bDropped; }

    bool eventFilter(QObject* /*pWatched*/, QEvent* pEvent) override
    {
        switch (pEvent->type())
        {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::TabletPress:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
            m_bDropped = true;
            return true;
        default:
            return false;
        }
    }

private:
    bool m_bDropped = false;
};

} // namespace

CScriptRunner::CScriptRunner(QWidget& window,
                             CEditor& editor,
                             CEditorFace& face,
                             CViewArea& views,
                             CStatusLine& status,
                             std::function<void()> onPlayed)
    : m_Window(window)
    , m_Editor(editor)
    , m_Face(face)
    , m_Views(views)
    , m_Status(status)
    , m_OnPlayed(std::move(onPlayed))
{
}

CScriptPlayer CScriptRunner::MakePlayer(CScriptCursor& cursor,
                                        const std::string& strPath,
                                        std::function<void()> onPlayed)
{
    m_Face.SetScript(&cursor);
    return {m_Editor.GetHost(),
            cursor,
            m_Views.GetActiveId(),
            m_Editor.GetPlugin(),
            strPath,
            std::move(onPlayed)};
}

EScriptEnd CScriptRunner::Play(const std::string& strPath, std::string& strFault)
{
    std::unique_ptr<CTCPARSE_KEYWORD> pScript;
    if (!LoadScript(strPath, pScript, strFault))
    {
        return EScriptEnd::Unusable;
    }
    CScriptCursor cursor;
    CScriptPlayer player =
        MakePlayer(cursor,
                   strPath,
                   [this]
                   {
                       // A person sees each keyword at work.
                       m_Views.RequestFrames();
                       QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
                   });
    const uint64_t uLevel = m_Editor.GetDocument().GetGeneration();
    const bool bPlayed = player.Play(pScript.get(), strFault);
    DropInput();
    m_Face.SetScript(nullptr);
    m_Views.LookAgain();
    if (uLevel == m_Editor.GetDocument().GetGeneration())
    {
        m_Views.FrameAll(); // another level was framed when it came
    }
    m_OnPlayed();
    return bPlayed ? EScriptEnd::Played : EScriptEnd::Failed;
}

// What was pressed while the script ran was meant for what was shown then, and would be done with
// what is at hand and shown now.
void CScriptRunner::DropInput()
{
    CPressDropper dropper;
    QCoreApplication::instance()->installEventFilter(&dropper);
    QCoreApplication::processEvents();
    if (dropper.HasDropped())
    {
        m_Status.Say("What was pressed while the script was played is left out");
    }
}

bool CScriptRunner::Recover(const SRecoverable& entry)
{
    CScriptCursor cursor;
    CScriptPlayer player = MakePlayer(cursor, entry.strStem + ".tellur");
    const auto play = [&player](CTCPARSE_KEYWORD* pFirst, std::string& strFault)
    {
        return player.Play(pFirst, strFault);
    };
    size_t nSteps = 0;
    std::string strFault;
    const bool bOpen = m_Editor.GetAutosave().Recover(entry, play, nSteps, strFault);
    m_Face.SetScript(nullptr);
    m_Views.LookAgain();
    if (bOpen)
    {
        ReportRecovered(nSteps, CountHistorySteps(entry, entry.steps.size()), strFault);
    }
    return bOpen;
}

void CScriptRunner::ReportRecovered(size_t nSteps, size_t nAll, const std::string& strFault)
{
    const QString strGiven = QString("%1 of %2 steps were given back.")
                                 .arg(static_cast<qulonglong>(nSteps))
                                 .arg(static_cast<qulonglong>(nAll));
    m_Status.Say(strGiven);
    if (!strFault.empty())
    {
        QMessageBox box(QMessageBox::Warning, "Tellur", strGiven, QMessageBox::Ok, &m_Window);
        box.setInformativeText(QString::fromStdString(strFault) +
                               "\nAll of them are kept for another try.");
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
}
