#include "editor/app/CClosedViews.h"

#include <algorithm>

namespace
{

constexpr size_t MOST_CLOSED = 12;

} // namespace

void CClosedViews::Add(const SViewLook& look)
{
    if (look.bFramed)
    {
        return;
    }
    if (m_Looks.size() >= MOST_CLOSED)
    {
        m_Looks.erase(m_Looks.begin());
    }
    m_Looks.push_back(look);
}

bool CClosedViews::Take(EViewKind eKind, SViewLook& look)
{
    const auto found = std::find_if(m_Looks.rbegin(),
                                    m_Looks.rend(),
                                    [eKind](const SViewLook& one) { return one.eKind == eKind; });
    if (found == m_Looks.rend())
    {
        return false;
    }
    look = *found;
    m_Looks.erase(std::next(found).base());
    return true;
}
