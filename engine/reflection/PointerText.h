#pragma once

#include <string>
#include <string_view>

class CRTTI;
class CRTTIObject;

// Appends one pointer as text: the object's identifier, "null" for none.
void AppendPointer(std::string& strText, const CRTTIObject* pObject);

// Reads such a text. False, with pObject untouched, when it names no object of that class.
bool ParsePointer(std::string_view strText, const CRTTI* pClass, CRTTIObject*& pObject);
