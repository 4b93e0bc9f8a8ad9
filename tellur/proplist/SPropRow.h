#pragma once

#include "tellur/proplist/IPropListCtrlUser.h"

#include <memory>
#include <string>
#include <vector>

// One row of a property list: a category, or a field of the edited objects, or a part of one. Made
// as a shared object: an editor keeps its row while it is at work, also when the list has other
// rows.
struct SPropRow : std::enable_shared_from_this<SPropRow>
{
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
    int iItem = -1;       // its place among the rows that are shown; -1: behind a closed row
    bool bParent = false; // has rows below it
    bool bOpen = true;    // which are shown
    // As far as a pointer or a list goes: what it pointed to when the rows were made.
    PropObjects pointed;

    // Takes the value that the objects have now.
    void ReadValue();

    bool IsEditable() const; // false for a category too

    // What the pointers of the objects point to now, whatever element the row stands for; empty for
    // a field of another type.
    PropObjects FindPointed() const;
    // Whom a command on the row is about: what its pointers point to, of the row of an element that
    // element, for any other row the edited objects.
    PropObjects FindTargets() const;
};

using PropRows = std::vector<std::shared_ptr<SPropRow>>;
