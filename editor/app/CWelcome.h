#pragma once

#include "editor/app/CLevelPictures.h"
#include "editor/core/IHostObserver.h"

#include <memory>
#include <string>
#include <vector>

class CCommandList;
class CDocumentActions;
class CEditor;
class CEditorFace;
class CPanelDock;
class CStartPage;
class CStatusLine;
class CViewArea;
struct SEditorSettings;

// What a welcome works with; everything is borrowed and outlives it.
struct SWelcomeParts
{
    CEditor& editor;
    CEditorFace& face;
    CViewArea& views;
    CPanelDock& panel;
    CStatusLine& status;
    CCommandList& commands;
    CDocumentActions& documents;
    SEditorSettings& settings; // what of this has been is noted there
};

// What the editor does for a person who does not know it yet: the start page as long as there is no
// level; with the first level ever the panel and a brush that raises, with the first of a later run
// the tool that was at hand last; and until the first stroke, and whenever the hand is empty, a
// line that says what mouse and keys do. Owned by the window, gone before the views. UI thread.
class CWelcome : private IHostObserver
{
public:
    explicit CWelcome(const SWelcomeParts& parts);
    ~CWelcome() override;
    CWelcome(const CWelcome&) = delete;
    CWelcome& operator=(const CWelcome&) = delete;

    // A person is about to work: without it there is the start page and no more. After
    // CEditor::BeginTools.
    void BeginPerson();

    void FollowLevel(); // one may have come
    void Follow();      // the tool, the keys or the files may be others

private:
    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

    void MakePage(QWidget& views);
    void GiveKeyboardTo(QWidget* pWidget); // in place of the views; null: they have it themselves
    void ListRecent();
    void OpenSample();
    void TakeFirstBrush();
    void TakeLastTool();
    void NoteTool(); // for the next run
    void ShowHint();

    SWelcomeParts m_Parts;
    CLevelPictures m_Pictures;
    CStartPage* m_pPage; // the window's
    std::vector<std::string> m_Listed;
    bool m_bPerson = false;
    bool m_bToolGiven = false; // with the first level
    bool m_bPressed = false;   // by a hand, and what comes of it is a stroke of its
};
