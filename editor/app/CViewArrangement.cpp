#include "editor/app/CViewArrangement.h"

#include "editor/app/CIniFile.h"
#include "editor/app/CViewArea.h"

#include <algorithm>

namespace
{

constexpr char KINDS[] = "views/kinds";
constexpr char SHARES[] = "views/shares";
constexpr char ALONE[] = "views/alone"; // its place; below 0 for none
constexpr int MOST_VIEWS = 12;          // of a file
constexpr int NONE = -1;

// The ground in perspective and, half as wide, from above.
const QList<int> FIRST_SHARES = {3000, 0, 2000, 1000};

EViewKind FindMissingKind(const CViewArea& views)
{
    const auto found = std::find_if(std::begin(VIEW_KINDS),
                                    std::end(VIEW_KINDS),
                                    [&](EViewKind eKind)
                                    {
                                        return std::none_of(views.GetViews().begin(),
                                                            views.GetViews().end(),
                                                            [eKind](const CViewWidget* pView)
                                                            { return pView->GetKind() == eKind; });
                                    });
    return found != std::end(VIEW_KINDS) ? *found : EViewKind::Perspective;
}

} // namespace

CViewArrangement::CViewArrangement(CViewArea& views)
    : m_Views(views)
{
}

void CViewArrangement::SetCount(size_t nViews)
{
    if (m_Views.IsOneAlone())
    {
        m_Views.ToggleAlone(m_Views.GetActiveId());
    }
    const size_t nBefore = m_Views.GetViews().size();
    while (m_Views.GetViews().size() < nViews)
    {
        m_Views.Add(FindMissingKind(m_Views));
    }
    for (size_t i = nBefore; i < m_Views.GetViews().size(); ++i)
    {
        CViewWidget& view = *m_Views.GetViews()[i];
        view.LookFrom(view.GetNavigator().GetLook()); // each one has made the others smaller
    }
    while (m_Views.GetViews().size() > std::max(nViews, size_t{1}))
    {
        const std::vector<CViewWidget*>& views = m_Views.GetViews();
        const bool bLastActive = views.back() == m_Views.GetActive();
        m_Views.Close(views[views.size() - (bLastActive ? 2 : 1)]->GetViewId());
    }
}

bool CViewArrangement::HasCount(size_t nViews) const
{
    return m_Views.GetViews().size() == nViews;
}

void CViewArrangement::Reset()
{
    const std::vector<CViewWidget*> before = m_Views.GetViews();
    m_Views.Add(EViewKind::Perspective);
    m_Views.Add(EViewKind::Top);
    for (const CViewWidget* pView : before)
    {
        m_Views.Close(pView->GetViewId());
    }
    m_Views.SetShares(FIRST_SHARES);
    m_Views.FrameAll();
}

void CViewArrangement::Restore(const QVariantMap& values, QStringList& wrong)
{
    if (!values.contains(KINDS) || !RestoreViews(values))
    {
        Reset();
        if (values.contains(KINDS))
        {
            wrong << KINDS;
        }
        return;
    }
    if (values.contains(SHARES) && !RestoreShares(values))
    {
        wrong << SHARES;
    }
    int iAlone = NONE;
    SIniReader{values, wrong}.Read(ALONE, iAlone);
    if (iAlone >= 0 && iAlone < static_cast<int>(m_Views.GetViews().size()))
    {
        m_Views.ToggleAlone(m_Views.GetViews()[static_cast<size_t>(iAlone)]->GetViewId());
    }
}

bool CViewArrangement::RestoreViews(const QVariantMap& values)
{
    const QStringList names = values[KINDS].toStringList();
    std::vector<EViewKind> kinds;
    for (const QString& strName : names)
    {
        EViewKind eKind = EViewKind::Perspective;
        if (!FindViewKind(strName.toStdString(), eKind))
        {
            return false;
        }
        kinds.push_back(eKind);
    }
    if (kinds.empty() || kinds.size() > MOST_VIEWS)
    {
        return false;
    }
    for (const EViewKind eKind : kinds)
    {
        m_Views.Add(eKind);
    }
    return true;
}

bool CViewArrangement::RestoreShares(const QVariantMap& values)
{
    QList<int> shares;
    for (const QString& strShare : values[SHARES].toStringList())
    {
        bool bNumber = false;
        shares << strShare.toInt(&bNumber);
        if (!bNumber || shares.back() < 0)
        {
            return false;
        }
    }
    return m_Views.SetShares(shares);
}

void CViewArrangement::Store(QVariantMap& values) const
{
    QStringList kinds;
    QStringList shares;
    int iAlone = NONE;
    for (const CViewWidget* pView : m_Views.GetViews())
    {
        kinds << QString(GetViewName(pView->GetKind()));
        if (m_Views.IsOneAlone() && pView == m_Views.GetActive())
        {
            iAlone = static_cast<int>(kinds.size()) - 1;
        }
    }
    for (const int iShare : m_Views.GetShares())
    {
        shares << QString::number(iShare);
    }
    values[KINDS] = kinds;
    values[SHARES] = shares;
    values[ALONE] = iAlone;
}
