#pragma once

#include <cstdint>

class CRTTI;
class CRTTIObject;

// The object of that identifier when its class derives from pClass (null: any class). Null when
// there is none, and as long as nothing can be found.
CRTTIObject* FindObjectOfClass(int32_t iId, const CRTTI* pClass);
