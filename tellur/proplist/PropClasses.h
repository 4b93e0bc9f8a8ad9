#pragma once

#include <vector>

class CRTTI;
class CRTTIField;

// The class that a pointer field or a list of pointers declares; null for a field of another type.
const CRTTI* GetPointedClass(const CRTTIField& field);

// The classes that derive from pClass and can be made, by name. From null derives none.
std::vector<const CRTTI*> FindConcreteClasses(const CRTTI* pClass);
