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
// each reason and drag, and what was saved or put away. While a script is played it is quiet. Takes
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
    // What the drag that runs has come to so far.
    struct SDrag
    {
        bool bRuns = false;
        bool bTool = false;    // a mode was current at the press
        bool bChanged = false; // by one of its points
        bool bSideways = false;
        SVec3 changed;      // where the last one was that changed something
        uint32_t uSaid = 0; // a bit by each outcome
        QString strSaid;    // the line that says why nothing changed, until something does
        QElapsedTimer sinceSaid;
        bool bChangedSince = false;
    };

    void OnNotice(const char* pszText) override;
    void OnStandingNotice(const char* pszTopic, const char* pszText) override;
    void Hear(const SHostEvent& event);
    void EndDrag();
    void WithdrawReason();
    bool IsNews(const SPointOutcome& outcome, const SHostEvent& event) const;

    CEditor& m_Editor;
    const CEditorFace& m_Face;
    CStatusLine& m_Status;
    INoticeSink* m_pBefore;
    SDrag m_Drag;
};
