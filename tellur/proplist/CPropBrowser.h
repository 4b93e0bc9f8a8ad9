#pragma once

#include "tellur/proplist/IPropListCtrlUser.h"

class CPropInPlaceCtrl;
class CPropRowModel;
struct SPropRow;

// Values that a person chooses in dialogs and menus: files, folders, the objects that pointers are
// set to; and their clearing. The rows may be others once a dialog is closed; then nothing is
// changed.
class CPropBrowser
{
public:
    explicit CPropBrowser(CPropRowModel& model); // borrowed, as long as the browser lives

    // What a browse button does for its row. uKind: the browse bits of its field. bShift: the value
    // is cleared instead. Nothing happens without a user.
    void Browse(SPropRow& row, uint32_t uKind, bool bShift, CPropInPlaceCtrl& sender);
    // A pointer becomes null, a text empty, an element leaves its list; a whole list is cleared
    // once the person agrees. Other values stay.
    void ClearValue(SPropRow& row);
    // See CPropListCtrl::ChooseObjects.
    bool ChooseObjects(const CRTTI* pClass, PropObjects& picked);

private:
    std::string BrowsePath(const SPropRow& row, uint32_t uKind) const;
    void PickObject(const SPropRow& row);
    void AssignObject(const SPropRow& row, const CRTTIObject& object);

    CPropRowModel& m_Model;
};
