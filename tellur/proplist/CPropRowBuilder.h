#pragma once

#include "tellur/proplist/SPropRow.h"

#include <set>

// Makes the tree of rows of some objects, with their values: the fields that all of the objects
// have, under their categories, and the parts of each. Lives for one tree.
class CPropRowBuilder
{
public:
    // toggled: the keys of rows that a person opened or closed, borrowed. bHidden: fields with the
    // edit flag HIDDEN have rows too. pUser: names the elements of lists, null for none.
    CPropRowBuilder(const std::set<std::string>& toggled, bool bHidden, IPropListCtrlUser* pUser);

    // Parents stand before their children.
    PropRows Build(const PropObjects& objects);

private:
    void AddFields(const PropObjects& objects, int iDepth, const std::string& strKey);
    void
    AddField(CRTTIField& field, const PropObjects& objects, int iDepth, const std::string& strKey);
    void AddParts(const SPropRow& row, int nParts);
    void AddPointed(const SPropRow& row);
    SPropRow& AddRow(CRTTIField* pField, int iElement, const PropObjects& objects);
    std::string GetPartName(const CRTTIField& field, int iPart, const PropObjects& objects) const;
    bool HasRow(const CRTTIField& field) const;

    const std::set<std::string>& m_Toggled;
    bool m_bHidden;
    IPropListCtrlUser* m_pUser;
    PropRows m_Rows;
    std::set<const CRTTIObject*> m_Path; // of pointers on the way to a row, against circles
};
