#pragma once

#include "host/Export.h"

#include <cstdint>
#include <string>
#include <vector>

// Reflection of the engine core: classes list their tunable members as fields; property grids,
// brush files and actions read and write members by name and text. Implemented by the engine
// library. UI thread.
//
// Order of calls: a class has a static CRTTI, made when its library is opened; its registration
// routine, called from there, makes a field for each member and gives it to RegisterField. From
// then on anybody may look at the class and read and write the fields of its objects, in any order.
// The library's close takes the class away: no object of it and no pointer to a field may be left.
// Setting a field calls OnFieldChanged of its object before it returns.

namespace fs
{
class file;
}

class CRTTI;
class CRTTIField;
class CRTTIObject;

enum ERTTIType : uint32_t
{
    RTTI_CHAR = 1,
    RTTI_UCHAR = 2,
    RTTI_SHORT = 3,
    RTTI_USHORT = 4,
    RTTI_INT = 5,
    RTTI_UINT = 6,
    RTTI_INT64 = 7,
    RTTI_UINT64 = 8,
    RTTI_FLOAT = 9,
    RTTI_DOUBLE = 10,
    RTTI_BOOL = 11,
    RTTI_STRING = 12,
    RTTI_VEC2 = 13,
    RTTI_VEC3 = 14,
    RTTI_VEC4 = 15,
    RTTI_MATRIX = 16,
    RTTI_POINTER = 17,
    RTTI_POINTER_LIST = 18,
    RTTI_ENUM = 20,
    RTTI_FLAGS = 21,
};

// Field flags, the "f:" part: EDIT is bit 1, READONLY bit 2 (shown, not changed).
enum ERTTIFieldFlag : uint32_t
{
    RTTI_FIELD_EDIT = 0x1,
    RTTI_FIELD_READONLY = 0x2,
};

// Edit flags, the "e:" part and the limits.
enum ERTTIEditFlag : uint32_t
{
    RTTI_EDIT_EDIT = 0x1,             // "EDIT"
    RTTI_EDIT_COMBO = 0x2,            // "COMBO"
    RTTI_EDIT_SPINNER = 0x4,          // "SPINNER"
    RTTI_EDIT_CHECKBOX = 0x8,         // "CHECKBOX"
    RTTI_EDIT_NO_MAIN_SPINNER = 0x10, // "NOMAINSPINNER"
    RTTI_EDIT_COLOR = 0x20,           // "COLOR"
    RTTI_EDIT_BROWSE = 0x40,          // "BROWSE"
    RTTI_EDIT_BROWSE_FILE = 0x80,     // "FILE"
    RTTI_EDIT_BROWSE_FOLDER = 0x100,  // "FOLDER"
    RTTI_EDIT_HAS_MIN = 0x200,        // "min:NUMBER;" (a part of its own)
    RTTI_EDIT_HAS_MAX = 0x400,        // "max:NUMBER;"
    RTTI_EDIT_HAS_STEP = 0x800,       // "step:NUMBER;"
    RTTI_EDIT_HIDDEN = 0x2000,        // "HIDDEN"
    RTTI_EDIT_DROP = 0x4000,          // "DROP"
    RTTI_EDIT_DESCRIPTION = 0x8000,   // "DESCRIPTION"
};

// Engine class ids, shared by the classes of one family.
enum EEngineClass : int32_t
{
    ENGINE_CLASS_FUNCTION = 2, // terrain functions
    ENGINE_CLASS_ACTION = 3,   // editor actions
};

// The named values of an enumeration or of a flag set, in the order added.
class TELLUR_API CEnumInfo
{
public:
    struct SEntry
    {
        int32_t iValue = 0;
        std::string strName;
        std::string strDescription;
    };

    // False when the value or the name is there already.
    bool Add(int32_t iValue, const char* pszName, const char* pszDescription);
    const SEntry* Find(int32_t iValue) const; // null when unknown
    const SEntry* Find(const char* pszName) const;

    const std::vector<SEntry>& GetInfo() const { return m_Entries; }

private:
    std::vector<SEntry> m_Entries;
};

// One reflected member of a class. Made by the class's registration routine, owned by its CRTTI.
// Texts are lossless: integers "%d", floating numbers the shortest text that reads back to the same
// bits, vectors and matrices blank-separated, bools "1" and "0" ("true" and "false" are read too),
// enumerations their value name, flag sets their names joined by '|', objects their identifier.
class TELLUR_API CRTTIField
{
public:
    // Gives the address of the member inside an object of the owning class.
    using FAddress = void* (*)(CRTTIObject*);

    CRTTIField(ERTTIType eType, FAddress pAddress);
    virtual ~CRTTIField();
    CRTTIField(const CRTTIField&) = delete;
    CRTTIField& operator=(const CRTTIField&) = delete;

    // pszEditFlags: parts "x:TEXT;" with x one of f, e (names joined by '|'), c, d, min, max, step,
    // prec. False when the name is empty or a part is malformed or unknown; the field is then
    // unfit.
    bool Initialize(const char* pszName, const char* pszEditFlags);

    const char* GetName() const { return m_Name.c_str(); }

    const char* GetDescription() const { return m_Description.c_str(); }

    const char* GetCategory() const { return m_Category.c_str(); }

    uint32_t GetFlags() const { return m_Flags; }

    uint32_t GetEditFlags() const { return m_EditFlags; }

    ERTTIType GetType() const { return m_Type; }

    double GetMin() const { return m_Min; }

    double GetMax() const { return m_Max; }

    double GetStep() const { return m_Step; }

    int GetPrecision() const { return m_Precision; } // display digits, 3 unless "prec:N;" says so

    // Gives the text of the value in an object, which is borrowed; empty for null.
    virtual std::string ToString(const CRTTIObject* pObject) const = 0;
    // Sets the value from its text and tells the object through OnFieldChanged. False, with the
    // value as it was, for null and for a text that is no value of the type.
    bool FromString(CRTTIObject* pObject, const char* pszText);
    // Write and read the value in its binary form, little-endian. False on a file fault; a failed
    // read leaves the value and tells the object through OnFailedToLoadField.
    bool Save(fs::file& file, const CRTTIObject* pObject) const;
    bool Load(fs::file& file, CRTTIObject* pObject);

    // The names of the values, borrowed; null for other types than enumerations and flags.
    virtual const CEnumInfo* GetEnumInfo() const { return nullptr; }

    void* GetAddress(CRTTIObject* pObject) const { return m_Address(pObject); }

    const void* GetAddress(const CRTTIObject* pObject) const;

protected:
    // Parses into the member; false, and it stays, when the text is no value of the type. Neither
    // is null.
    virtual bool Parse(CRTTIObject* pObject, const char* pszText) = 0;

    std::string m_Name;
    std::string m_Description;
    std::string m_Category;
    ERTTIType m_Type;
    uint32_t m_Flags = 0;
    uint32_t m_EditFlags = 0;
    double m_Min = 0.0;
    double m_Max = 0.0;
    double m_Step = 0.0;
    int m_Precision = 3;
    FAddress m_Address;
};

// FAddress of a member, the object's own: RTTI_MEMBER_ADDRESS(CSetHeightFunction, m_Height).
template <class TOwner, auto TMember> void* GetMemberAddress(CRTTIObject* pObject)
{
    return &(static_cast<TOwner*>(pObject)->*TMember);
}

#define RTTI_MEMBER_ADDRESS(TOwner, member) (&GetMemberAddress<TOwner, &TOwner::member>)

// One per reflected class, static storage. It registers itself with the one registry of the process
// on construction and leaves it on destruction (an unloaded library takes its classes with it).
class TELLUR_API CRTTI
{
public:
    using FFactory = CRTTIObject* (*)(); // null for an abstract class
    using FRegisterFields = void (*)(CRTTI&);

    enum EFlags : uint32_t
    {
        FLAG_NONE = 0,
        FLAG_ABSTRACT = 1,
        FLAG_INTERFACE = 2,
    };

    // iEngineClass: EEngineClass, or another family's id. pBase: null for a root.
    CRTTI(const char* pszClassName,
          int32_t iEngineClass,
          FFactory pFactory,
          const CRTTI* pBase,
          uint32_t uFlags,
          FRegisterFields pRegisterFields = nullptr);
    ~CRTTI();
    CRTTI(const CRTTI&) = delete;
    CRTTI& operator=(const CRTTI&) = delete;

    // Adds a field, which the class owns from the call on. False for null and for a name that the
    // class has already; the field is then deleted.
    bool AddField(CRTTIField* pField);
    // Does Initialize and AddField. A failure is a fault of the build and ends the process with
    // "RTTI FATAL ERROR %s.%s: %s" (class, field, edit flags).
    void RegisterField(CRTTIField* pField, const char* pszName, const char* pszEditFlags);

    const std::vector<CRTTIField*>& GetFields() const { return m_Fields; } // own ones, as declared

    const char* GetClassNameA() const { return m_ClassName.c_str(); }

    int32_t GetEngineClass() const { return m_EngineClass; }

    const CRTTI* GetBase() const { return m_Base; }

    bool IsAbstract() const { return (m_Flags & FLAG_ABSTRACT) != 0; }

    bool IsInterface() const { return (m_Flags & FLAG_INTERFACE) != 0; }

    bool IsDerivedFrom(const CRTTI* pClass) const; // true for the class itself
    bool NameGreater(const CRTTI& other) const;    // by class name, byte order
    CRTTIObject* Create() const;                   // owned by the caller; null without a factory

    static const CRTTI* FindClass(const char* pszClassName); // null when unknown
    static std::vector<const CRTTI*> GetClasses();           // in order of registration

private:
    std::string m_ClassName;
    int32_t m_EngineClass;
    FFactory m_Factory;
    const CRTTI* m_Base;
    uint32_t m_Flags;
    std::vector<CRTTIField*> m_Fields;
};

// Base of every reflected object.
class TELLUR_API CRTTIObject
{
public:
    CRTTIObject() = default;
    CRTTIObject(const CRTTIObject&) = default;
    CRTTIObject& operator=(const CRTTIObject&) = default;
    virtual ~CRTTIObject() = default;

    virtual const CRTTI* GetRTTI() const = 0; // of its own class, static, never null

    // Finds a field of the class or of one of its bases, most derived first; null when there is
    // none.
    CRTTIField* FindField(const char* pszName) const;
    const char* GetClassNameA() const;
    bool IsExactClass(const CRTTI* pClass) const;
    bool FromClass(const CRTTI* pClass) const;

    bool FromClass(int32_t iEngineClass) const { return FromEngineClass(iEngineClass); }

    bool IsExactEngineClass(int32_t iEngineClass) const;
    bool FromEngineClass(int32_t iEngineClass) const;

    // Write and read all fields in their binary form, most derived class first. False on the first
    // fault, after which nothing more is written or read.
    bool SaveFields(fs::file& file) const;
    bool LoadFields(fs::file& file);

    // The engine's number of the object; 0 for one that the engine does not know.
    virtual int32_t GetObjectId() const { return 0; }

    // The STATIC flag. True: part of the level for good, no pointer field may be set to it.
    virtual bool IsStaticObject() const { return false; }

    // An object was made for a pointer field of this one, or for an element of a list (iElement;
    // -1: none). True: it is this object's from now on, the field points to it and the one before
    // is gone. False: nothing happened, the caller keeps it; so do objects that own nothing.
    virtual bool AdoptObject(CRTTIField* /*pField*/, int /*iElement*/, CRTTIObject* /*pNew*/)
    {
        return false;
    }

    // A field was set by text or value, not by LoadFields. pField: of the class, borrowed.
    virtual void OnFieldChanged(CRTTIField* /*pField*/) {}

    // LoadFields found no value for the field, which is as it was; borrowed.
    virtual void OnFailedToLoadField(CRTTIField* /*pField*/) {}

    // Get or set a field of exactly that type; setting calls OnFieldChanged. False, and nothing is
    // changed, for null, for a field of another type or class, when a floating number to be set is
    // not finite, and when a field to be set has the read-only flag.
    bool GetFieldIntEditor(const CRTTIField* pField, int32_t& iValue) const;
    bool SetFieldIntEditor(CRTTIField* pField, int32_t iValue);
    bool GetFieldFloatEditor(const CRTTIField* pField, float& fValue) const;
    bool SetFieldFloatEditor(CRTTIField* pField, float fValue);
    bool GetFieldDoubleEditor(const CRTTIField* pField, double& fValue) const;
    bool SetFieldDoubleEditor(CRTTIField* pField, double fValue);
    bool GetFieldBoolEditor(const CRTTIField* pField, bool& bValue) const;
    bool SetFieldBoolEditor(CRTTIField* pField, bool bValue);
    bool GetFieldStringEditor(const CRTTIField* pField, std::string& strValue) const;
    bool SetFieldStringEditor(CRTTIField* pField, const char* pszValue);
};
