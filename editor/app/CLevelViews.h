#pragma once

#include "editor/app/SLevelViews.h"

#include <string>

class CLevelDocument;
class CViewArea;

// Brings the cameras of the views back when a level is opened, and has its bookmarks. Owned by the
// look of the level. UI thread.
class CLevelViews
{
public:
    explicit CLevelViews(const CLevelDocument& document); // borrowed

    // To be called while the views still show the level before, and once they show the new one.
    void Leave(CViewArea& views);
    void Enter(CViewArea& views);
    // Writes where the views look from, when that is another place than last time. Nothing for a
    // level without a file.
    void Keep(CViewArea& views);

    bool HasBookmark(size_t i) const { return m_Kept.bookmarks[i].has_value(); }

    void SetBookmark(const CViewArea& views, size_t i); // where the active view looks from
    // The active view goes there, or the first one of that kind. False when none is open.
    bool GoToBookmark(const CViewArea& views, size_t i) const;

private:
    std::string GetPath() const;
    void Write(CViewArea& views);

    const CLevelDocument& m_Document;
    std::string m_Path; // of the level that the views show; empty for none
    SLevelViews m_Kept;
    std::string m_Written;
};
