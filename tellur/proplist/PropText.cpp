#include "tellur/proplist/PropText.h"

#include "host/NumberText.h"
#include "host/Reflection.h"

#include <algorithm>

namespace
{

constexpr const char* UNREADABLE = "error";

bool IsKnownType(ERTTIType eType)
{
    return (eType >= RTTI_CHAR && eType <= RTTI_POINTER_LIST) || eType == RTTI_ENUM ||
           eType == RTTI_FLAGS;
}

bool HoldsFractions(const CRTTIField& field)
{
    return field.GetType() == RTTI_FLOAT || field.GetType() == RTTI_DOUBLE ||
           GetComponentCount(field) > 0;
}

// The text with each of its words changed by fn, which may refuse one: then as it was.
template <class TFn> std::string ChangeWords(const std::string& strText, TFn fn)
{
    std::vector<std::string> words = SplitWords(strText);
    const bool bAll = std::all_of(words.begin(), words.end(), fn);
    return bAll ? JoinWords(words) : strText;
}

// The bits of one entry of a set of flags; 0 when there is no such entry.
uint32_t GetFlagBits(const CRTTIField& field, int iElement)
{
    const CEnumInfo* pInfo = field.GetEnumInfo();
    const bool bThere =
        pInfo != nullptr && iElement >= 0 && iElement < static_cast<int>(pInfo->GetInfo().size());
    return bThere ? static_cast<uint32_t>(pInfo->GetInfo()[static_cast<size_t>(iElement)].iValue)
                  : 0;
}

uint32_t GetFlags(const CRTTIField& field, const CRTTIObject* pObject)
{
    return *static_cast<const uint32_t*>(field.GetAddress(pObject));
}

} // namespace

int GetComponentCount(const CRTTIField& field)
{
    switch (field.GetType())
    {
    case RTTI_VEC2:
        return 2;
    case RTTI_VEC3:
        return 3;
    case RTTI_VEC4:
        return 4;
    case RTTI_MATRIX:
        return 16;
    default:
        return 0;
    }
}

bool IsInteger(const CRTTIField& field)
{
    return field.GetType() >= RTTI_CHAR && field.GetType() <= RTTI_UINT64;
}

PropObjects GetPointed(const CRTTIField& field, CRTTIObject* pObject)
{
    PropObjects pointed;
    if (field.GetType() == RTTI_POINTER_LIST)
    {
        pointed = *static_cast<const PropObjects*>(field.GetAddress(pObject));
    }
    else if (field.GetType() == RTTI_POINTER)
    {
        CRTTIObject* pTarget = *static_cast<CRTTIObject* const*>(field.GetAddress(pObject));
        pointed.assign(pTarget != nullptr ? 1 : 0, pTarget);
    }
    return pointed;
}

std::vector<std::string> SplitWords(const std::string& strText)
{
    std::vector<std::string> words;
    size_t iStart = 0;
    while (iStart < strText.size())
    {
        const size_t iEnd = std::min(strText.find(' ', iStart), strText.size());
        if (iEnd > iStart)
        {
            words.push_back(strText.substr(iStart, iEnd - iStart));
        }
        iStart = iEnd + 1;
    }
    return words;
}

std::string JoinWords(const std::vector<std::string>& words)
{
    std::string strText;
    for (const std::string& strWord : words)
    {
        strText += (strText.empty() ? "" : " ") + strWord;
    }
    return strText;
}

std::optional<std::string>
GetValueText(const CRTTIField& field, int iElement, const CRTTIObject* pObject)
{
    if (pObject == nullptr || !IsKnownType(field.GetType()))
    {
        return std::nullopt;
    }
    if (iElement < 0)
    {
        return field.ToString(pObject);
    }
    if (field.GetType() == RTTI_FLAGS)
    {
        const uint32_t uBits = GetFlagBits(field, iElement);
        // An entry may stand for several bits and counts as set when all of them are.
        return uBits != 0 && (GetFlags(field, pObject) & uBits) == uBits ? "1" : "0";
    }
    const std::vector<std::string> words = SplitWords(field.ToString(pObject));
    const auto iWord = static_cast<size_t>(iElement);
    return iWord < words.size() ? std::optional<std::string>(words[iWord]) : std::nullopt;
}

std::string MakeWholeText(const CRTTIField& field,
                          int iElement,
                          const CRTTIObject* pObject,
                          const std::string& strPart)
{
    if (iElement < 0 || pObject == nullptr)
    {
        return strPart;
    }
    if (field.GetType() == RTTI_FLAGS)
    {
        const uint32_t uBits = GetFlagBits(field, iElement);
        const uint32_t uOther = GetFlags(field, pObject) & ~uBits;
        const bool bSet = strPart != "0" && strPart != "false";
        return std::to_string(uOther | (bSet ? uBits : 0));
    }
    std::vector<std::string> words = SplitWords(field.ToString(pObject));
    if (static_cast<size_t>(iElement) < words.size())
    {
        words[static_cast<size_t>(iElement)] = strPart;
    }
    return JoinWords(words);
}

std::string GetObjectText(const CRTTIObject* pObject, IPropListCtrlUser* pUser)
{
    if (pObject == nullptr)
    {
        return PROP_NULL;
    }
    const int32_t iId = pObject->GetObjectId();
    const std::string strName = pUser != nullptr ? pUser->GetObjectName(pObject, iId) : "";
    return std::string("[") + pObject->GetClassNameA() + "]" + strName + "(" + std::to_string(iId) +
           ")";
}

std::string
GetShownText(const CRTTIField& field, int iElement, CRTTIObject* pObject, IPropListCtrlUser* pUser)
{
    const std::optional<std::string> value = GetValueText(field, iElement, pObject);
    if (!value)
    {
        return UNREADABLE;
    }
    const ERTTIType eType = field.GetType();
    if (eType == RTTI_BOOL || (eType == RTTI_FLAGS && iElement >= 0))
    {
        return *value == "1" ? "true" : "false";
    }
    if (eType == RTTI_POINTER || (eType == RTTI_POINTER_LIST && iElement >= 0))
    {
        const PropObjects pointed = GetPointed(field, pObject);
        const auto iTarget = static_cast<size_t>(std::max(iElement, 0));
        return GetObjectText(iTarget < pointed.size() ? pointed[iTarget] : nullptr, pUser);
    }
    if (eType == RTTI_POINTER_LIST)
    {
        const size_t nItems = GetPointed(field, pObject).size();
        // One item leaves a blank where the plural has its letter, as it always did.
        return nItems == 0 ? "empty" : std::to_string(nItems) + (nItems == 1 ? " item " : " items");
    }
    return *value;
}

double ClampValue(const CRTTIField& field, double fValue)
{
    if ((field.GetEditFlags() & RTTI_EDIT_HAS_MIN) != 0)
    {
        fValue = std::max(fValue, field.GetMin());
    }
    if ((field.GetEditFlags() & RTTI_EDIT_HAS_MAX) != 0)
    {
        fValue = std::min(fValue, field.GetMax());
    }
    return fValue;
}

std::string ClampText(const CRTTIField& field, const std::string& strText)
{
    if (!IsInteger(field) && !HoldsFractions(field))
    {
        return strText;
    }
    return ChangeWords(strText,
                       [&field](std::string& strWord)
                       {
                           double fValue = 0.0;
                           if (!ParseNumber(strWord, fValue))
                           {
                               return false;
                           }
                           const double fInside = ClampValue(field, fValue);
                           if (fInside != fValue)
                           {
                               strWord.clear();
                               AppendNumber(strWord, fInside);
                           }
                           return true;
                       });
}

std::string PutPoints(const CRTTIField& field, const std::string& strTyped)
{
    if (!HoldsFractions(field))
    {
        return strTyped;
    }
    return ChangeWords(strTyped,
                       [](std::string& strWord)
                       {
                           double fValue = 0.0;
                           std::replace(strWord.begin(), strWord.end(), ',', '.');
                           strWord.erase(0, strWord.starts_with('+') ? 1 : 0);
                           return ParseNumber(strWord, fValue);
                       });
}
