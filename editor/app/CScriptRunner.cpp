#include "editor/app/CScriptRunner.h"

#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CScriptBar.h"
#include "editor/app/CStatusLine.h"
#include "editor/app/CViewArea.h"
#include "editor/core/Words.h"
#include "editor/script/CScriptCursor.h"
#include "editor/script/CScriptPlayer.h"
#include "parser/CTCParseNodes.h"

#include <QFileInfo>
#include <QMessageBox>

#include <memory>
#include <utility>

namespace
{

size_t CountCalls(const CTCPARSE_KEYWORD* pFirst)
{
    size_t nCalls = 0;
    for (; pFirst != nullptr; pFirst = pFirst->next)
    {
        ++nCalls;
    }
    return nCalls;
}

} // namespace

CScriptRunner::CScriptRunner(QWidget& window,
                             CEditor& editor,
                             CEditorFace& face,
                             CViewArea& views,
                             CStatusLine& status,
                             CScriptBar& bar,
                             std::function<void()> onPlayed)
    : m_Window(window)
    , m_Editor(editor)
    , m_Face(face)
    , m_Views(views)
    , m_Status(status)
    , m_Bar(bar)
    , m_OnPlayed(std::move(onPlayed))
{
}

CScriptPlayer CScriptRunner::MakePlayer(CScriptCursor& cursor,
                                        const std::string& strPath,
                                        std::function<bool()> onPlayed)
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
    CScriptPlayer player = MakePlayer(
        cursor, strPath, [this] { return m_Bar.Step([this] { m_Views.RequestFrames(); }); });
    m_Bar.Begin(QFileInfo(QString::fromStdString(strPath)).fileName(), CountCalls(pScript.get()));
    const uint64_t uLevel = m_Editor.GetDocument().GetGeneration();
    const bool bPlayed = player.Play(pScript.get(), strFault);
    m_Editor.GetHost().GetInput().EndDrag(); // that the script, or what stopped it, has left open
    const bool bStopped = EndBar(strPath, strFault);
    m_Face.SetScript(nullptr);
    m_Views.LookAgain();
    if (uLevel == m_Editor.GetDocument().GetGeneration())
    {
        m_Views.FrameAll(); // another level was framed when it came
    }
    m_OnPlayed();
    return !bPlayed ? EScriptEnd::Failed : bStopped ? EScriptEnd::Stopped : EScriptEnd::Played;
}

// What was pressed while the script ran was meant for what was shown then, and would be done with
// what is at hand and shown now.
bool CScriptRunner::EndBar(const std::string& strPath, std::string& strFault)
{
    const size_t nPlayed = m_Bar.GetPlayedCount();
    const size_t nCalls = m_Bar.GetCallCount();
    const bool bStopped = strFault.empty() && m_Bar.IsStopped() && nPlayed < nCalls;
    const bool bDropped = m_Bar.End();
    if (bStopped)
    {
        const QString strHowFar = QString(Words("stopped after %1 of %2 calls"))
                                      .arg(static_cast<qulonglong>(nPlayed))
                                      .arg(static_cast<qulonglong>(nCalls));
        m_Status.Say(Words("The script was ") + strHowFar + Words("; Undo takes its steps back"));
        strFault = strPath + ": " + strHowFar.toStdString();
    }
    else if (bDropped)
    {
        m_Status.Say(Words("What was pressed while the script was played is left out"));
    }
    return bStopped;
}

bool CScriptRunner::Stop()
{
    m_Bar.Stop();
    return m_Bar.IsPlaying();
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
    const QString strGiven = nAll == 0 ? QString(Words("The level was given back."))
                                       : QString(Words("%1 of %2 steps were given back."))
                                             .arg(static_cast<qulonglong>(nSteps))
                                             .arg(static_cast<qulonglong>(nAll));
    m_Status.Say(strGiven);
    if (!strFault.empty())
    {
        QMessageBox box(QMessageBox::Warning, "Tellur", strGiven, QMessageBox::Ok, &m_Window);
        box.setInformativeText(QString::fromStdString(strFault) +
                               Words("\nAll of them are kept for another try."));
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
}
