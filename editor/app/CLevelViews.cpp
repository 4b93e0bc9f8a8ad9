#include "editor/app/CLevelViews.h"

#include "editor/app/CViewArea.h"
#include "editor/autosave/CAutosave.h"
#include "editor/core/CLevelDocument.h"

#include <algorithm>
#include <utility>

CLevelViews::CLevelViews(const CLevelDocument& document, const CAutosave& autosave)
    : m_Document(document)
    , m_Autosave(autosave)
{
}

CLevelViews::~CLevelViews()
{
    if (!m_Autosave.HasLeft())
    {
        DropUnsaved();
    }
}

void CLevelViews::DropUnsaved()
{
    if (!m_Unsaved.empty())
    {
        SLevelViews::Remove(std::exchange(m_Unsaved, {}));
    }
}

// A height map that was opened alone is as good as a level here.
std::string CLevelViews::GetPath() const
{
    return m_Document.GetPath().empty() ? m_Document.GetHeightPath() : m_Document.GetPath();
}

void CLevelViews::Leave(CViewArea& views)
{
    if (!m_Path.empty())
    {
        Write(views);
    }
    DropUnsaved();
    m_Path.clear();
    m_Kept = {};
}

void CLevelViews::Enter(CViewArea& views)
{
    m_Path = GetPath();
    m_Kept = m_Path.empty() ? SLevelViews() : SLevelViews::Load(m_Path);
    // The first of each kind to the first, and so on: meanwhile there may be others beside them.
    std::vector<SViewLook> left = m_Kept.views;
    for (CViewWidget* pView : views.GetViews())
    {
        const auto found =
            std::find_if(left.begin(),
                         left.end(),
                         [pView](const SViewLook& look) { return look.eKind == pView->GetKind(); });
        if (found != left.end())
        {
            pView->LookFrom(*found);
            left.erase(found);
        }
    }
    views.GetClosed().Set(std::move(left));
    m_Written.clear();
}

void CLevelViews::FollowPath()
{
    std::string strPath = GetPath();
    m_Path = strPath.empty() ? m_Path : std::move(strPath);
}

void CLevelViews::Keep(CViewArea& views)
{
    m_Path = GetPath(); // it may have been saved under another name
    const std::string& strName = m_Path.empty() ? m_Autosave.GetStem() : m_Path;
    if (!m_Unsaved.empty() && m_Unsaved != strName)
    {
        DropUnsaved();
        m_Written.clear();
    }
    m_Unsaved = m_Path.empty() ? strName : std::string();
    Write(views);
}

void CLevelViews::Write(CViewArea& views)
{
    const std::string& strName = m_Path.empty() ? m_Unsaved : m_Path;
    if (strName.empty())
    {
        return;
    }
    m_Kept.views.clear();
    for (CViewWidget* pView : views.GetViews())
    {
        m_Kept.views.push_back(pView->GetNavigator().GetLook());
    }
    const std::vector<SViewLook>& closed = views.GetClosed().GetLooks();
    m_Kept.views.insert(m_Kept.views.end(), closed.begin(), closed.end());
    const std::string strText = m_Kept.MakeText(strName);
    if (strText != m_Written)
    {
        m_Written = strText; // what cannot be written is not tried again until it is another
        SLevelViews::Save(strName, strText);
    }
}

void CLevelViews::Recall(const std::string& strStem)
{
    if (m_Path.empty())
    {
        m_Kept = SLevelViews::Load(strStem);
        m_Unsaved = m_Autosave.GetStem() == strStem ? strStem : std::string();
    }
}

void CLevelViews::SetBookmark(const CViewArea& views, size_t i)
{
    m_Kept.bookmarks[i] = views.GetActive()->GetNavigator().GetLook();
    m_Kept.bookmarks[i]->bFramed = false; // a place, whatever the view shows later
}

bool CLevelViews::GoToBookmark(const CViewArea& views, size_t i) const
{
    CViewWidget* pView = views.GetActive();
    if (!HasBookmark(i)) // what menus show follows later
    {
        return false;
    }
    const EViewKind eKind = m_Kept.bookmarks[i]->eKind;
    if (pView->GetKind() != eKind)
    {
        const auto found =
            std::find_if(views.GetViews().begin(),
                         views.GetViews().end(),
                         [&](const CViewWidget* pOther)
                         { return pOther->GetKind() == eKind && pOther->isVisibleTo(&views); });
        pView = found != views.GetViews().end() ? *found : nullptr;
    }
    if (pView != nullptr)
    {
        pView->LookFrom(*m_Kept.bookmarks[i]);
    }
    return pView != nullptr;
}
