#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct SMenuItemResource;

// A menu as data: items, separators and pop-ups, which it owns with their sub-menus. Whoever shows
// it reads it; no window is needed. Positions count from 0 and include separators.
class TELLUR_API CMenu
{
public:
    CMenu(); // not valid until it is loaded or gets its first item
    ~CMenu();
    CMenu(CMenu&& other) noexcept; // the other menu becomes empty and not valid
    CMenu& operator=(CMenu&& other) noexcept;
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;

    // Replaces the content by that of a menu resource. Answers false and keeps the content when no
    // module has a menu of that id.
    bool LoadMenu(uint32_t uResourceId);
    // Empties the menu, which is then not valid. Sub-menus that were handed out end with that.
    void DestroyMenu();

    // Inserts an item before the one at iPos, or at the end when there is none. Answers false for a
    // null text. The menu is valid from its first item or separator on.
    bool InsertItem(size_t iPos, uint32_t uId, const char* pszText);
    bool InsertSeparator(size_t iPos);
    // Appends a pop-up and takes over its menu. Returns that sub-menu, which this menu owns.
    CMenu* AppendSubMenu(const char* pszText, CMenu&& subMenu);
    // Gives an item a new id and text in place; a null text keeps the old one. Answers false for a
    // separator, a pop-up and a position that is not there.
    bool ModifyItem(size_t iPos, uint32_t uNewId, const char* pszText);

    bool IsValid() const { return m_Valid; }

    size_t GetItemCount() const;
    uint32_t GetItemId(size_t iPos) const;      // 0 for separators, pop-ups and beyond the end
    std::string GetItemText(size_t iPos) const; // empty for separators and beyond the end
    bool IsSeparator(size_t iPos) const;        // false beyond the end
    CMenu* GetSubMenu(size_t iPos);             // borrowed; null when the item opens none
    const CMenu* GetSubMenu(size_t iPos) const;

private:
    struct SItem;

    void AppendResource(const SMenuItemResource& item);
    void Insert(size_t iPos, SItem&& item);

    std::vector<SItem> m_Items;
    bool m_Valid = false;
};
