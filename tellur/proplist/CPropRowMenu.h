#pragma once

#include "framework/core/IFrontEnd.h"
#include "tellur/proplist/CPropClipboard.h"

class CMenu;
class CPropRowModel;

// The menu of a row and its commands: copied attributes, elements of lists, and what the list's
// user does with objects. The commands are EPropCommand.
class CPropRowMenu
{
public:
    explicit CPropRowMenu(CPropRowModel& model); // borrowed, as long as the menu lives

    // Shows the menu at the point until it is closed and carries out what was chosen. Nothing
    // happens without a user. The row may be gone afterwards.
    void Open(const SPropRow& row, SScreenPoint at);

    // The objects that the commands of the menu are about which was opened last: see
    // SPropRow::FindTargets. None when its row is gone.
    PropObjects GetObjects() const;

private:
    void Fill(CMenu& menu, const SPropRow& row) const;
    void Run(SPropRow& row, uint32_t uCommand);
    bool CanPaste(const SPropRow& row) const;

    CPropRowModel& m_Model;
    CPropClipboard m_Copied;
    std::string m_Key; // of the row whose menu was opened last
};
