#pragma once

#include "tellur/proplist/SPropRow.h"

// The attribute that was copied from a row, and which rows it may be pasted into. It keeps texts
// and identifiers, so that whatever was copied may go meanwhile.
class CPropClipboard
{
public:
    void Copy(const SPropRow& row); // of a row with a field
    // A value fits where the same type is, a part into a part; pointers where the class allows it
    // and the objects are still there. user: gives the engine that finds them.
    bool Fits(const SPropRow& row, IPropListCtrlUser& user) const;

    const std::string& GetText() const { return m_Text; } // empty when nothing was copied

private:
    const CRTTIField* m_pField = nullptr; // null: nothing was copied
    int m_iElement = -1;
    std::string m_Text;
    std::vector<int32_t> m_Pointed; // identifiers, of a pointer field
};
