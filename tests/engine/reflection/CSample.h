#pragma once

#include "host/ReflectionFields.h"

#include <string>
#include <vector>

// A reflected object with a field of every type, and what it was told.
class CSample : public CRTTIObject
{
public:
    static constexpr int32_t FAMILY = 2;

    const CRTTI* GetRTTI() const override { return &GetClass(); }

    int32_t GetObjectId() const override { return iId; }

    void OnFieldChanged(CRTTIField* pField) override { changed.emplace_back(pField->GetName()); }

    void OnFailedToLoadField(CRTTIField* pField) override
    {
        failed.emplace_back(pField->GetName());
    }

    static const CEnumInfo& GetModes()
    {
        static const CEnumInfo s_Info =
            MakeNames({{0, "mode_default"}, {1, "mode_min"}, {-5, "mode_far"}});
        return s_Info;
    }

    static const CEnumInfo& GetBits()
    {
        static const CEnumInfo s_Info =
            MakeNames({{3, "both"}, {1, "one"}, {2, "two"}, {INT32_MIN, "top"}});
        return s_Info;
    }

    static const CRTTI& GetClass()
    {
        static const CRTTI s_Class(
            "Sample",
            FAMILY,
            [] { return static_cast<CRTTIObject*>(new CSample); },
            nullptr,
            CRTTI::FLAG_NONE,
            &CSample::RegisterFields);
        return s_Class;
    }

    int32_t iId = 0;
    std::vector<std::string> changed;
    std::vector<std::string> failed;

    int8_t m_Char = 0;
    uint8_t m_UChar = 0;
    int16_t m_Short = 0;
    uint16_t m_UShort = 0;
    int32_t m_Int = 0;
    uint32_t m_UInt = 0;
    int64_t m_Int64 = 0;
    uint64_t m_UInt64 = 0;
    float m_Float = 0.0F;
    double m_Double = 0.0;
    bool m_Bool = false;
    std::string m_String;
    float m_Vec2[2] = {};
    SVec3 m_Vec3;
    SVec4 m_Vec4;
    SMatrix4 m_Matrix;
    int32_t m_Enum = 0;
    uint32_t m_Flags = 0;
    CRTTIObject* m_Pointer = nullptr;
    std::vector<CRTTIObject*> m_List;

private:
    static CEnumInfo MakeNames(const std::vector<std::pair<int32_t, const char*>>& entries)
    {
        CEnumInfo info;
        for (const auto& [iValue, pszName] : entries)
        {
            info.Add(iValue, pszName, "some words");
        }
        return info;
    }

    template <class TField, auto TMember, class... TMore>
    static void Add(CRTTI& own, const char* pszName, TMore... more)
    {
        own.RegisterField(
            new TField(&GetMemberAddress<CSample, TMember>, more...), pszName, "f:EDIT;e:EDIT;");
    }

    static void RegisterFields(CRTTI& own)
    {
        Add<CRTTIFieldChar, &CSample::m_Char>(own, "char");
        Add<CRTTIFieldUChar, &CSample::m_UChar>(own, "uchar");
        Add<CRTTIFieldShort, &CSample::m_Short>(own, "short");
        Add<CRTTIFieldUShort, &CSample::m_UShort>(own, "ushort");
        Add<CRTTIFieldInt, &CSample::m_Int>(own, "int");
        Add<CRTTIFieldUInt, &CSample::m_UInt>(own, "uint");
        Add<CRTTIFieldInt64, &CSample::m_Int64>(own, "int64");
        Add<CRTTIFieldUInt64, &CSample::m_UInt64>(own, "uint64");
        Add<CRTTIFieldFloat, &CSample::m_Float>(own, "float");
        Add<CRTTIFieldDouble, &CSample::m_Double>(own, "double");
        Add<CRTTIFieldBool, &CSample::m_Bool>(own, "bool");
        Add<CRTTIFieldString, &CSample::m_String>(own, "string");
        Add<CRTTIFieldVec2, &CSample::m_Vec2>(own, "vec2");
        Add<CRTTIFieldVec3, &CSample::m_Vec3>(own, "vec3");
        Add<CRTTIFieldVec4, &CSample::m_Vec4>(own, "vec4");
        Add<CRTTIFieldMatrix, &CSample::m_Matrix>(own, "matrix");
        Add<CRTTIFieldEnum, &CSample::m_Enum>(own, "enum", &GetModes());
        Add<CRTTIFieldFlags, &CSample::m_Flags>(own, "flags", &GetBits());
        Add<CRTTIFieldPointer, &CSample::m_Pointer>(own, "pointer", &GetTargetClass());
        Add<CRTTIFieldPointerList, &CSample::m_List>(own, "list", &GetTargetClass());
    }

    // The class pointers may point to; not the own one, whose fields are being made.
    static const CRTTI& GetTargetClass();
};

// What the pointers of a CSample may point to.
class CTarget : public CRTTIObject
{
public:
    explicit CTarget(int32_t iOwnId)
        : m_Id(iOwnId)
    {
    }

    const CRTTI* GetRTTI() const override { return &GetClass(); }

    int32_t GetObjectId() const override { return m_Id; }

    static const CRTTI& GetClass()
    {
        static const CRTTI s_Class("Target", 9, nullptr, nullptr, CRTTI::FLAG_ABSTRACT);
        return s_Class;
    }

private:
    int32_t m_Id;
};

inline const CRTTI& CSample::GetTargetClass()
{
    return CTarget::GetClass();
}

// Targets 7 and -8, and a sample that is no target under 9.
inline CRTTIObject* FindSampleObject(int32_t iId)
{
    static CTarget s_Seven(7);
    static CTarget s_Far(-8);
    static CSample s_Other;
    CRTTIObject* pFound = iId == 7 ? &s_Seven : nullptr;
    pFound = iId == -8 ? &s_Far : pFound;
    return iId == 9 ? &s_Other : pFound;
}
