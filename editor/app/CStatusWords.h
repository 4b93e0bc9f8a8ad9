#pragma once

#include "editor/core/IHostObserver.h"
#include "host/IPluginStrokes.h"
#include "host/Notice.h"

#include <QElapsedTimer>
#include <QString>

class CEditor;
class CEditorFace;
class CStatusLine;

// Says in the status bar what would otherwise be silent: why a stroke changes nothing, a line for
// each reason and stroke, and what was saved or put away. Of what a stroke does elsewhere than
// under the cursor it speaks when the stroke is whole. While a script is played it is quiet. Takes
// the notices of the process while it lives. Owned by the window; everything given is borrowed and
// outlives it. UI thread.
class CStatusWords : public IHostObserver, private INoticeSink
{
public:
    CStatusWords(CEditor& editor, const CEditorFace& face, CStatusLine& status);
    ~CStatusWords() override;
    CStatusWords(const CStatusWords&) = delete;
    CStatusWords& operator=(const CStatusWords&) = delete;

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

private:
    // What the stroke that runs has come to so far: a drag, or all drags of a step that is open.
    struct SStroke
    {
        bool bRuns = false;
        bool bTool = false;    // a mode was current at the press
        bool bChanged = false; // by one of its points
        bool bChangedHere = false;
        bool bSideways = false;
        bool bHeard = false; // that there was a point
        SVec3 changed;       // where the last point under the cursor was that changed something
        uint32_t uSaid = 0;  // a bit by each outcome
        EPointOutcome eSaid = EPointOutcome::None;
        QString strSaid; // the line that says why nothing changed, until something does
        QElapsedTimer sinceSaid;
        bool bChangedSince = false;
        QString strHeld; // why points elsewhere changed nothing, for the end
        EPointOutcome eHeld = EPointOutcome::None;
    };

    void OnNotice(const char* pszText) override;
    void OnStandingNotice(const char* pszTopic, const char* pszText) override;
    bool IsStepOpen() const;
    void Hear(const SHostEvent& event);
    void NoteChange(const SHostEvent& event, bool bHere);
    void SayReason(const SPointOutcome& outcome, const QString& strReason);
    void HoldReason(const SPointOutcome& outcome, const QString& strReason);
    void EndStroke();
    bool HasNoExtent() const; // the brush of the tool at hand
    void WithdrawReason();
    bool IsNews(const SPointOutcome& outcome, const SHostEvent& event) const;

    CEditor& m_Editor;
    const CEditorFace& m_Face;
    CStatusLine& m_Status;
    INoticeSink* m_pBefore;
    SStroke m_Stroke;
};
