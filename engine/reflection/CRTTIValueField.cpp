#include "host/NumberText.h"
#include "host/ReflectionFields.h"

#include <strings.h>

#include <cstring>

namespace
{

// The text of a type that is nothing but nCount numbers of TNumber.
template <class TNumber, size_t nCount> struct SNumbers
{
    static std::string ToText(const void* pValue)
    {
        const auto* pNumbers = static_cast<const TNumber*>(pValue);
        std::string strText;
        for (size_t i = 0; i < nCount; ++i)
        {
            strText += i > 0 ? " " : "";
            AppendNumber(strText, pNumbers[i]);
        }
        return strText;
    }

    static bool FromText(std::string_view strText, void* pValue)
    {
        // Read aside: a text with one number that is none, or with too many, changes nothing.
        TNumber numbers[nCount] = {};
        for (TNumber& number : numbers)
        {
            if (!ParseNumber(TakeWord(strText), number))
            {
                return false;
            }
        }
        if (!TrimBlanks(strText).empty())
        {
            return false;
        }
        std::memcpy(pValue, numbers, sizeof numbers);
        return true;
    }
};

struct SBool
{
    static std::string ToText(const void* pValue)
    {
        return *static_cast<const bool*>(pValue) ? "1" : "0";
    }

    static bool FromText(std::string_view strText, void* pValue)
    {
        const std::string strValue(TrimBlanks(strText));
        const bool bTrue = strValue == "1" || ::strcasecmp(strValue.c_str(), "true") == 0;
        const bool bFalse = strValue == "0" || ::strcasecmp(strValue.c_str(), "false") == 0;
        if (bTrue || bFalse)
        {
            *static_cast<bool*>(pValue) = bTrue;
        }
        return bTrue || bFalse;
    }
};

struct SString
{
    static std::string ToText(const void* pValue)
    {
        return *static_cast<const std::string*>(pValue);
    }

    static bool FromText(std::string_view strText, void* pValue)
    {
        *static_cast<std::string*>(pValue) = strText;
        return true;
    }
};

// clang-format off
template <ERTTIType TType> struct SText;
template <> struct SText<RTTI_CHAR> : SNumbers<int8_t, 1> {};
template <> struct SText<RTTI_UCHAR> : SNumbers<uint8_t, 1> {};
template <> struct SText<RTTI_SHORT> : SNumbers<int16_t, 1> {};
template <> struct SText<RTTI_USHORT> : SNumbers<uint16_t, 1> {};
template <> struct SText<RTTI_INT> : SNumbers<int32_t, 1> {};
template <> struct SText<RTTI_UINT> : SNumbers<uint32_t, 1> {};
template <> struct SText<RTTI_INT64> : SNumbers<int64_t, 1> {};
template <> struct SText<RTTI_UINT64> : SNumbers<uint64_t, 1> {};
template <> struct SText<RTTI_FLOAT> : SNumbers<float, 1> {};
template <> struct SText<RTTI_DOUBLE> : SNumbers<double, 1> {};
template <> struct SText<RTTI_BOOL> : SBool {};
template <> struct SText<RTTI_STRING> : SString {};
template <> struct SText<RTTI_VEC2> : SNumbers<float, 2> {};
template <> struct SText<RTTI_VEC3> : SNumbers<float, 3> {};
template <> struct SText<RTTI_VEC4> : SNumbers<float, 4> {};
template <> struct SText<RTTI_MATRIX> : SNumbers<float, 16> {};

// clang-format on

} // namespace

template <ERTTIType TType>
std::string CRTTIValueField<TType>::ToString(const CRTTIObject* pObject) const
{
    return pObject != nullptr ? SText<TType>::ToText(GetAddress(pObject)) : std::string();
}

template <ERTTIType TType>
bool CRTTIValueField<TType>::Parse(CRTTIObject* pObject, const char* pszText)
{
    return SText<TType>::FromText(pszText, GetAddress(pObject));
}

template class TELLUR_API CRTTIValueField<RTTI_CHAR>;
template class TELLUR_API CRTTIValueField<RTTI_UCHAR>;
template class TELLUR_API CRTTIValueField<RTTI_SHORT>;
template class TELLUR_API CRTTIValueField<RTTI_USHORT>;
template class TELLUR_API CRTTIValueField<RTTI_INT>;
template class TELLUR_API CRTTIValueField<RTTI_UINT>;
template class TELLUR_API CRTTIValueField<RTTI_INT64>;
template class TELLUR_API CRTTIValueField<RTTI_UINT64>;
template class TELLUR_API CRTTIValueField<RTTI_FLOAT>;
template class TELLUR_API CRTTIValueField<RTTI_DOUBLE>;
template class TELLUR_API CRTTIValueField<RTTI_BOOL>;
template class TELLUR_API CRTTIValueField<RTTI_STRING>;
template class TELLUR_API CRTTIValueField<RTTI_VEC2>;
template class TELLUR_API CRTTIValueField<RTTI_VEC3>;
template class TELLUR_API CRTTIValueField<RTTI_VEC4>;
template class TELLUR_API CRTTIValueField<RTTI_MATRIX>;
