#pragma once

#include "tellur/proplist/IPropListCtrlUser.h"

#include <array>
#include <memory>
#include <string>

class CPropInPlaceCtrl;

// The in-place editors that a row can have, in the order of their slots.
enum EPropEditor : uint8_t
{
    PROP_EDITOR_EDIT,
    PROP_EDITOR_SPINNER,
    PROP_EDITOR_CHECKBOX,
    PROP_EDITOR_BROWSE,
    PROP_EDITOR_COMBO,
    PROP_EDITOR_CLASS_COMBO,
    PROP_EDITOR_COUNT,
};

// One row of a property list: a category, or a field of the edited objects, or a part of one.
struct SPropRow
{
    SPropRow();
    ~SPropRow();
    SPropRow(const SPropRow&) = delete;
    SPropRow& operator=(const SPropRow&) = delete;

    CRTTIField* pField = nullptr; // null: a category
    // The element of a pointer list, the component of a vector or matrix, the entry of a set of
    // flags; -1: the whole field.
    int iElement = -1;
    PropObjects objects; // that have the field
    std::string strKey;  // names the row among the others
    std::string strName;
    std::string strText;     // the value as it is written and compared, of the first object
    bool bDifferent = false; // the objects do not have the same value
    int iDepth = 0;
    int iItem = -1;       // where the list view shows it; -1: behind a closed row
    bool bParent = false; // has rows below it
    bool bOpen = true;    // which are shown
    // As far as a pointer or a list goes: what it pointed to when the rows were made.
    PropObjects pointed;
    // Made when the row is edited first; windows of the list.
    std::array<std::unique_ptr<CPropInPlaceCtrl>, PROP_EDITOR_COUNT> editors;
};
