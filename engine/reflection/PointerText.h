#pragma once

#include <string>
#include <string_view>

class CRTTI;
class CRTTIObject;

// One pointer as text: the object's identifier, "null" for none.
void AppendPointer(std::string& strText, const CRTTIObject* pObject);

// False, with pObject untouched, when the text names no object of that class.
bool ParsePointer(std::string_view strText, const CRTTI* pClass, CRTTIObject*& pObject);
