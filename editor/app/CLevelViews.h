#pragma once

#include "editor/app/SLevelViews.h"

#include <string>

class CAutosave;
class CLevelDocument;
class CViewArea;

// Brings the cameras of the views back when a level is opened, and has its bookmarks. Those of a
// level without a file are kept under the name of its autosave, and as long as that. Owned by the
// look of the level. UI thread.
class CLevelViews
{
public:
    CLevelViews(const CLevelDocument& document, const CAutosave& autosave); // borrowed
    ~CLevelViews();
    CLevelViews(const CLevelViews&) = delete;
    CLevelViews& operator=(const CLevelViews&) = delete;

    // To be called while the views still show the level before, and once they show the new one.
    void Leave(CViewArea& views);
    void Enter(CViewArea& views);
    // Writes where the views look from, when that is another place than last time. Nothing for a
    // level without a file of which nothing is kept.
    void Keep(CViewArea& views);
    // The level that was entered may have been saved under a name.
    void FollowPath();
    // A level without a file, which the views show, came back out of the autosave of that stem.
    void Recall(const std::string& strStem);

    bool HasBookmark(size_t i) const { return m_Kept.bookmarks[i].has_value(); }

    void SetBookmark(const CViewArea& views, size_t i); // where the active view looks from
    // The active view goes there, or the first one of that kind. False when none is open.
    bool GoToBookmark(const CViewArea& views, size_t i) const;

private:
    std::string GetPath() const;
    void Write(CViewArea& views);
    void DropUnsaved();

    const CLevelDocument& m_Document;
    const CAutosave& m_Autosave;
    std::string m_Path;    // of the level that the views show; empty for none
    std::string m_Unsaved; // the name that its views have without one; empty for none
    SLevelViews m_Kept;
    std::string m_Written;
};
