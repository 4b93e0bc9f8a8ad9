#pragma once

#include "tellur/proplist/SPropRow.h"

// The way of a text into the objects: from a row to the list's user, and, where the user hands it
// back, from there into the fields.
class CPropValueWriter
{
public:
    // Parts are written object by object, with the rest of the object's value around them.
    void Write(IPropListCtrlUser& user, const SPropRow& row, const std::string& strText);

    // See IPropListCtrlUser::HandleFieldEdit. What is refused is logged. A null field or text is
    // refused silently.
    bool HandleFieldEdit(const PropObjects& objects,
                         CRTTIField* pField,
                         const char* pszValue,
                         int iElement);

private:
    bool WriteOne(CRTTIObject& object, CRTTIField& field, const std::string& strText, int iElement);

    int m_iWritten = -1; // the element that Write is at, which SetFieldValue does not tell
};
