#include "framework/core/CMenu.h"

#include "framework/core/ResourceModule.h"

#include <algorithm>
#include <memory>
#include <utility>

struct CMenu::SItem
{
    uint32_t uId = 0;
    bool bSeparator = false;
    std::string strText;
    std::unique_ptr<CMenu> pSubMenu;
};

CMenu::CMenu() = default;

CMenu::~CMenu() = default;

CMenu::CMenu(CMenu&& other) noexcept
    : m_Items(std::exchange(other.m_Items, {}))
    , m_Valid(std::exchange(other.m_Valid, false))
{
}

CMenu& CMenu::operator=(CMenu&& other) noexcept
{
    CMenu taken(std::move(other));
    m_Items.swap(taken.m_Items);
    m_Valid = taken.m_Valid;
    return *this;
}

bool CMenu::LoadMenu(uint32_t uResourceId)
{
    const SMenuResource* pResource = FindMenuResource(uResourceId);
    if (pResource == nullptr)
    {
        return false;
    }
    DestroyMenu();
    for (const SMenuItemResource& item : pResource->items)
    {
        AppendResource(item);
    }
    m_Valid = true;
    return true;
}

void CMenu::AppendResource(const SMenuItemResource& item)
{
    if (item.nSubItems > 0)
    {
        // The pop-up goes in empty and is filled in its place: only there does its address stay.
        CMenu* pSubMenu = AppendSubMenu(item.pszText, CMenu());
        for (size_t i = 0; i < item.nSubItems; ++i)
        {
            pSubMenu->AppendResource(item.pSubItems[i]);
        }
    }
    else if (item.pszText == nullptr)
    {
        InsertSeparator(m_Items.size());
    }
    else
    {
        InsertItem(m_Items.size(), item.uId, item.pszText);
    }
}

void CMenu::DestroyMenu()
{
    m_Items.clear();
    m_Valid = false;
}

void CMenu::Insert(size_t iPos, SItem&& item)
{
    const size_t iPlace = std::min(iPos, m_Items.size());
    m_Items.insert(m_Items.begin() + static_cast<std::ptrdiff_t>(iPlace), std::move(item));
    m_Valid = true;
}

bool CMenu::InsertItem(size_t iPos, uint32_t uId, const char* pszText)
{
    if (pszText == nullptr)
    {
        return false;
    }
    Insert(iPos, {uId, false, pszText, nullptr});
    return true;
}

bool CMenu::InsertSeparator(size_t iPos)
{
    Insert(iPos, {0, true, "", nullptr});
    return true;
}

CMenu* CMenu::AppendSubMenu(const char* pszText, CMenu&& subMenu)
{
    auto pSubMenu = std::make_unique<CMenu>(std::move(subMenu));
    // A pop-up counts as a menu even while it has no items. It lives apart from its item, so that
    // the pointer that is handed out stays good when the list of items grows.
    pSubMenu->m_Valid = true;
    CMenu* pHandedOut = pSubMenu.get();
    Insert(m_Items.size(), {0, false, pszText != nullptr ? pszText : "", std::move(pSubMenu)});
    return pHandedOut;
}

bool CMenu::ModifyItem(size_t iPos, uint32_t uNewId, const char* pszText)
{
    if (iPos >= m_Items.size() || m_Items[iPos].bSeparator || m_Items[iPos].pSubMenu != nullptr)
    {
        return false;
    }
    m_Items[iPos].uId = uNewId;
    if (pszText != nullptr)
    {
        m_Items[iPos].strText = pszText;
    }
    return true;
}

size_t CMenu::GetItemCount() const
{
    return m_Items.size();
}

uint32_t CMenu::GetItemId(size_t iPos) const
{
    return iPos < m_Items.size() ? m_Items[iPos].uId : 0;
}

std::string CMenu::GetItemText(size_t iPos) const
{
    return iPos < m_Items.size() ? m_Items[iPos].strText : std::string();
}

bool CMenu::IsSeparator(size_t iPos) const
{
    return iPos < m_Items.size() && m_Items[iPos].bSeparator;
}

CMenu* CMenu::GetSubMenu(size_t iPos)
{
    return iPos < m_Items.size() ? m_Items[iPos].pSubMenu.get() : nullptr;
}

const CMenu* CMenu::GetSubMenu(size_t iPos) const
{
    return iPos < m_Items.size() ? m_Items[iPos].pSubMenu.get() : nullptr;
}
