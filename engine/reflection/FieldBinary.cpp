#include "engine/reflection/FieldBinary.h"

#include "engine/reflection/ObjectFinder.h"
#include "host/FileSystem.h"
#include "host/ReflectionFields.h"

#include <bit>
#include <cmath>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "values are written as they are");

namespace
{

constexpr size_t POINTER_BYTES = 5;
constexpr size_t PLAIN_BYTES_MAX = sizeof(SMatrix4);

// Bytes of a type that is written as it is in memory, 0 for the others.
size_t GetPlainBytes(ERTTIType eType)
{
    switch (eType)
    {
    case RTTI_CHAR:
    case RTTI_UCHAR:
    case RTTI_BOOL:
        return 1;
    case RTTI_SHORT:
    case RTTI_USHORT:
        return 2;
    case RTTI_INT:
    case RTTI_UINT:
    case RTTI_FLOAT:
    case RTTI_ENUM:
    case RTTI_FLAGS:
        return 4;
    case RTTI_INT64:
    case RTTI_UINT64:
    case RTTI_DOUBLE:
    case RTTI_VEC2:
        return 8;
    case RTTI_VEC3:
        return sizeof(SVec3);
    case RTTI_VEC4:
        return sizeof(SVec4);
    case RTTI_MATRIX:
        return sizeof(SMatrix4);
    default:
        return 0;
    }
}

bool WriteAll(fs::file& file, const void* pSource, size_t nBytes)
{
    return file.write(pSource, nBytes) == nBytes;
}

bool ReadAll(fs::file& file, void* pDest, size_t nBytes)
{
    return file.read(pDest, nBytes) == nBytes;
}

// Reads a count of elements of nBytes each that the rest of the file can hold.
bool ReadCount(fs::file& file, size_t nBytes, uint32_t& nCount)
{
    return ReadAll(file, &nCount, sizeof nCount) && file.tell() <= file.length() &&
           nCount <= (file.length() - file.tell()) / nBytes;
}

template <class TNumber> bool AreFinite(const char* pBytes, size_t nBytes)
{
    for (size_t i = 0; i < nBytes; i += sizeof(TNumber))
    {
        TNumber value = {};
        // Copied, because bytes of a file have no alignment.
        std::memcpy(&value, pBytes + i, sizeof value);
        if (!std::isfinite(value))
        {
            return false;
        }
    }
    return true;
}

bool IsValue(const CRTTIField& field, const char* pBytes, size_t nBytes)
{
    switch (field.GetType())
    {
    case RTTI_BOOL:
        return *pBytes == 0 || *pBytes == 1;
    case RTTI_ENUM:
    {
        int32_t iValue = 0;
        std::memcpy(&iValue, pBytes, sizeof iValue);
        return field.GetEnumInfo() == nullptr || field.GetEnumInfo()->Find(iValue) != nullptr;
    }
    case RTTI_FLOAT:
    case RTTI_VEC2:
    case RTTI_VEC3:
    case RTTI_VEC4:
    case RTTI_MATRIX:
        return AreFinite<float>(pBytes, nBytes);
    case RTTI_DOUBLE:
        return AreFinite<double>(pBytes, nBytes);
    default:
        return true;
    }
}

bool LoadPlain(fs::file& file, const CRTTIField& field, void* pValue, size_t nBytes)
{
    // Read aside first: what is no value of the field leaves the member as it was.
    char bytes[PLAIN_BYTES_MAX] = {};
    if (!ReadAll(file, bytes, nBytes) || !IsValue(field, bytes, nBytes))
    {
        return false;
    }
    std::memcpy(pValue, bytes, nBytes);
    return true;
}

bool SavePointer(fs::file& file, const CRTTIObject* pObject)
{
    // A null pointer has as many bytes, so that the length of a list follows from its count.
    char bytes[POINTER_BYTES] = {};
    if (pObject != nullptr)
    {
        const int32_t iId = pObject->GetObjectId();
        bytes[0] = 1;
        std::memcpy(bytes + 1, &iId, sizeof iId);
    }
    return WriteAll(file, bytes, sizeof bytes);
}

bool LoadPointer(fs::file& file, const CRTTI* pClass, CRTTIObject*& pObject)
{
    char bytes[POINTER_BYTES] = {};
    if (!ReadAll(file, bytes, sizeof bytes) || (bytes[0] != 0 && bytes[0] != 1))
    {
        return false;
    }
    int32_t iId = 0;
    std::memcpy(&iId, bytes + 1, sizeof iId);
    CRTTIObject* pFound = bytes[0] == 1 ? FindObjectOfClass(iId, pClass) : nullptr;
    if (pFound == nullptr && bytes[0] == 1)
    {
        return false;
    }
    pObject = pFound;
    return true;
}

bool SaveList(fs::file& file, const std::vector<CRTTIObject*>& list)
{
    const auto nCount = static_cast<uint32_t>(list.size());
    bool bDone = WriteAll(file, &nCount, sizeof nCount);
    for (const CRTTIObject* pObject : list)
    {
        bDone = bDone && SavePointer(file, pObject);
    }
    return bDone;
}

bool LoadList(fs::file& file, const CRTTI* pClass, std::vector<CRTTIObject*>& list)
{
    uint32_t nCount = 0;
    if (!ReadCount(file, POINTER_BYTES, nCount))
    {
        return false;
    }
    std::vector<CRTTIObject*> loaded(nCount);
    for (CRTTIObject*& pObject : loaded)
    {
        if (!LoadPointer(file, pClass, pObject))
        {
            return false;
        }
    }
    list = std::move(loaded);
    return true;
}

bool LoadString(fs::file& file, std::string& strValue)
{
    uint32_t nCount = 0;
    if (!ReadCount(file, 1, nCount))
    {
        return false;
    }
    std::string strLoaded(nCount, '\0');
    if (!ReadAll(file, strLoaded.data(), strLoaded.size()))
    {
        return false;
    }
    strValue = std::move(strLoaded);
    return true;
}

} // namespace

bool SaveFieldValue(fs::file& file, ERTTIType eType, const void* pValue)
{
    switch (eType)
    {
    case RTTI_STRING:
    {
        const auto& strValue = *static_cast<const std::string*>(pValue);
        const auto nCount = static_cast<uint32_t>(strValue.size());
        return WriteAll(file, &nCount, sizeof nCount) && WriteAll(file, strValue.data(), nCount);
    }
    case RTTI_POINTER:
        return SavePointer(file, *static_cast<CRTTIObject* const*>(pValue));
    case RTTI_POINTER_LIST:
        return SaveList(file, *static_cast<const std::vector<CRTTIObject*>*>(pValue));
    default:
        return GetPlainBytes(eType) > 0 && WriteAll(file, pValue, GetPlainBytes(eType));
    }
}

bool LoadFieldValue(fs::file& file, const CRTTIField& field, void* pValue)
{
    const ERTTIType eType = field.GetType();
    // The type of a field says which class it is of.
    switch (eType)
    {
    case RTTI_STRING:
        return LoadString(file, *static_cast<std::string*>(pValue));
    case RTTI_POINTER:
        return LoadPointer(file,
                           static_cast<const CRTTIFieldPointer&>(field).GetPointedClass(),
                           *static_cast<CRTTIObject**>(pValue));
    case RTTI_POINTER_LIST:
        return LoadList(file,
                        static_cast<const CRTTIFieldPointerList&>(field).GetPointedClass(),
                        *static_cast<std::vector<CRTTIObject*>*>(pValue));
    default:
        return GetPlainBytes(eType) > 0 && LoadPlain(file, field, pValue, GetPlainBytes(eType));
    }
}
