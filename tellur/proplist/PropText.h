#pragma once

#include "tellur/proplist/IPropListCtrlUser.h"

#include <optional>

// Values of fields and of their parts as text. iElement: as in SPropRow.

inline constexpr const char* PROP_DIFFERENT_VALUES = "<different values>";
inline constexpr const char* PROP_NULL = "null";

// The number of parts of a vector or matrix; 0 for a field of another type.
int GetComponentCount(const CRTTIField& field);
bool IsInteger(const CRTTIField& field);

// What the pointer, or the list, of an object points to; a null pointer is no entry of its own. A
// field of another type points to nothing.
PropObjects GetPointed(const CRTTIField& field, CRTTIObject* pObject);

// The value as the engine writes and reads it; of a flag "1" or "0", of a list's element its
// identifier. There is none when the field's type is not known or the part is not there.
std::optional<std::string>
GetValueText(const CRTTIField& field, int iElement, const CRTTIObject* pObject);

// The text of the whole field, with that part replaced.
std::string MakeWholeText(const CRTTIField& field,
                          int iElement,
                          const CRTTIObject* pObject,
                          const std::string& strPart);

// The value as a person reads it: bools and flags as "true" or "false", pointers as
// "[class]name(identifier)", lists by their number of items, "error" when it cannot be read.
std::string
GetShownText(const CRTTIField& field, int iElement, CRTTIObject* pObject, IPropListCtrlUser* pUser);
std::string GetObjectText(const CRTTIObject* pObject, IPropListCtrlUser* pUser);

// The text with its numbers brought inside the field's limits. A text that does not consist of
// numbers stays as it is.
std::string ClampText(const CRTTIField& field, const std::string& strText);

// The text that was typed with a point for each comma and without a plus in front, where that makes
// numbers of it and the field holds fractions; else as it was typed.
std::string PutPoints(const CRTTIField& field, const std::string& strTyped);

// The number inside the limits that the field has.
double ClampValue(const CRTTIField& field, double fValue);

// The words of a text between blanks.
std::vector<std::string> SplitWords(const std::string& strText);
std::string JoinWords(const std::vector<std::string>& words);
