#pragma once

#include "host/HostTypes.h"
#include "host/Reflection.h"

// The typed fields; see Reflection.h for the order of calls. Each is made with the address routine
// of its member, which has the C++ type that the table in the comment names:
//   Char int8_t, UChar uint8_t, Short int16_t, UShort uint16_t, Int int32_t, UInt uint32_t,
//   Int64 int64_t, UInt64 uint64_t, Float float, Double double, Bool bool, String std::string,
//   Vec2 float[2], Vec3 SVec3, Vec4 SVec4, Matrix SMatrix4, Pointer CRTTIObject*,
//   PointerList std::vector<CRTTIObject*>, Enum int32_t, Flags uint32_t.

template <ERTTIType TType> class TELLUR_API CRTTIValueField : public CRTTIField
{
public:
    explicit CRTTIValueField(FAddress pAddress)
        : CRTTIField(TType, pAddress)
    {
    }

    std::string ToString(const CRTTIObject* pObject) const override;

protected:
    bool Parse(CRTTIObject* pObject, const char* pszText) override;
};

using CRTTIFieldChar = CRTTIValueField<RTTI_CHAR>;
using CRTTIFieldUChar = CRTTIValueField<RTTI_UCHAR>;
using CRTTIFieldShort = CRTTIValueField<RTTI_SHORT>;
using CRTTIFieldUShort = CRTTIValueField<RTTI_USHORT>;
using CRTTIFieldInt = CRTTIValueField<RTTI_INT>;
using CRTTIFieldUInt = CRTTIValueField<RTTI_UINT>;
using CRTTIFieldInt64 = CRTTIValueField<RTTI_INT64>;
using CRTTIFieldUInt64 = CRTTIValueField<RTTI_UINT64>;
using CRTTIFieldFloat = CRTTIValueField<RTTI_FLOAT>;
using CRTTIFieldDouble = CRTTIValueField<RTTI_DOUBLE>;
using CRTTIFieldBool = CRTTIValueField<RTTI_BOOL>;
using CRTTIFieldString = CRTTIValueField<RTTI_STRING>;
using CRTTIFieldVec2 = CRTTIValueField<RTTI_VEC2>;
using CRTTIFieldVec3 = CRTTIValueField<RTTI_VEC3>;
using CRTTIFieldVec4 = CRTTIValueField<RTTI_VEC4>;
using CRTTIFieldMatrix = CRTTIValueField<RTTI_MATRIX>;

// Value names come from pInfo (borrowed, must outlive the field). Text: the value's name; a number
// is read too when it is one of the values.
class TELLUR_API CRTTIFieldEnum : public CRTTIField
{
public:
    CRTTIFieldEnum(FAddress pAddress, const CEnumInfo* pInfo);
    std::string ToString(const CRTTIObject* pObject) const override;

    const CEnumInfo* GetEnumInfo() const override { return m_Info; }

protected:
    bool Parse(CRTTIObject* pObject, const char* pszText) override;

private:
    const CEnumInfo* m_Info;
};

// A set of named bits. Text: the names joined by '|', "0" for none.
class TELLUR_API CRTTIFieldFlags : public CRTTIField
{
public:
    CRTTIFieldFlags(FAddress pAddress, const CEnumInfo* pInfo);
    std::string ToString(const CRTTIObject* pObject) const override;

    const CEnumInfo* GetEnumInfo() const override { return m_Info; }

protected:
    bool Parse(CRTTIObject* pObject, const char* pszText) override;

private:
    const CEnumInfo* m_Info;
};

// Resolves an object identifier to the object, null when there is none.
using FFindObjectById = CRTTIObject* (*)(int32_t iId);
// The engine sets it before there are objects; null: none is found.
TELLUR_API void SetObjectFinder(FFindObjectById pFinder);

// A pointer to a reflected object (not owned) whose class derives from pClass. Text: the
// identifier, "null" for none.
class TELLUR_API CRTTIFieldPointer : public CRTTIField
{
public:
    CRTTIFieldPointer(FAddress pAddress, const CRTTI* pClass);
    std::string ToString(const CRTTIObject* pObject) const override;

    const CRTTI* GetPointedClass() const { return m_Class; }

protected:
    bool Parse(CRTTIObject* pObject, const char* pszText) override;

private:
    const CRTTI* m_Class;
};

// A list of such pointers. Text: the identifiers, blank-separated; empty for an empty list.
class TELLUR_API CRTTIFieldPointerList : public CRTTIField
{
public:
    CRTTIFieldPointerList(FAddress pAddress, const CRTTI* pClass);
    std::string ToString(const CRTTIObject* pObject) const override;

    const CRTTI* GetPointedClass() const { return m_Class; }

protected:
    bool Parse(CRTTIObject* pObject, const char* pszText) override;

private:
    const CRTTI* m_Class;
};
