#include "tests/tellur/proplist/PropTestObjects.h"

namespace
{

CEnumInfo MakeInfo(std::initializer_list<std::pair<int, const char*>> entries)
{
    CEnumInfo info;
    for (const auto& [iValue, pszName] : entries)
    {
        info.Add(iValue, pszName, "");
    }
    return info;
}

const CEnumInfo g_Kinds = MakeInfo({{1, "rock"}, {2, "sand"}, {3, "clay"}});
const CEnumInfo g_Bits = MakeInfo({{1, "wet"}, {2, "steep"}, {4, "high"}});

template <class TField, auto TMember, class... TInfo>
void Add(CRTTI& rtti, const char* pszName, const char* pszFlags, TInfo... pInfo)
{
    rtti.RegisterField(
        new TField(&GetMemberAddress<CTestThing, TMember>, pInfo...), pszName, pszFlags);
}

} // namespace

const CRTTI CTestShape::s_RTTI("CTestShape",
                               1,
                               nullptr,
                               nullptr,
                               CRTTI::FLAG_ABSTRACT,
                               [](CRTTI& rtti)
                               {
                                   rtti.RegisterField(
                                       new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CTestShape, m_Sides)),
                                       "m_Sides",
                                       "f:EDIT;e:EDIT;");
                               });
template <> const CRTTI CTestBox::s_RTTI("CTestBox", 1, &CTestBox::Create, &CTestShape::s_RTTI, 0);
template <>
const CRTTI CTestBall::s_RTTI("CTestBall", 1, &CTestBall::Create, &CTestShape::s_RTTI, 0);
const CRTTI CTestThing::s_RTTI("CTestThing", 1, nullptr, nullptr, 0, &CTestThing::RegisterFields);

void CTestThing::RegisterFields(CRTTI& rtti)
{
    Add<CRTTIFieldFloat, &CTestThing::m_Share>(
        rtti, "m_Share", "f:EDIT;e:EDIT|SPINNER;c:Numbers;d:how much;min:0;max:1;prec:2;");
    Add<CRTTIFieldFloat, &CTestThing::m_Free>(rtti, "m_Free", "f:EDIT;e:EDIT|SPINNER;c:Numbers;");
    Add<CRTTIFieldBool, &CTestThing::m_On>(rtti, "m_On", "f:EDIT;e:CHECKBOX;c:Choices;");
    Add<CRTTIFieldInt, &CTestThing::m_Count>(
        rtti, "m_Count", "f:EDIT;e:EDIT|SPINNER;c:Numbers;step:2;");
    Add<CRTTIFieldEnum, &CTestThing::m_Kind>(rtti, "m_Kind", "f:EDIT;e:COMBO;c:Choices;", &g_Kinds);
    Add<CRTTIFieldFlags, &CTestThing::m_Bits>(rtti, "m_Bits", "f:EDIT;c:Choices;", &g_Bits);
    Add<CRTTIFieldVec3, &CTestThing::m_Place>(rtti, "m_Place", "f:EDIT;e:EDIT|SPINNER;c:Space;");
    Add<CRTTIFieldVec3, &CTestThing::m_Color>(
        rtti, "m_Color", "f:EDIT;e:EDIT|COLOR|SPINNER|NOMAINSPINNER;c:Space;");
    Add<CRTTIFieldMatrix, &CTestThing::m_Frame>(rtti, "m_Frame", "f:EDIT;e:EDIT;c:Space;");
    Add<CRTTIFieldString, &CTestThing::m_File>(rtti, "m_File", "f:EDIT;e:EDIT|FILE;c:Files;");
    Add<CRTTIFieldString, &CTestThing::m_Folder>(rtti, "m_Folder", "f:EDIT;e:EDIT|FOLDER;c:Files;");
    Add<CRTTIFieldInt, &CTestThing::m_Secret>(rtti, "m_Secret", "f:EDIT;e:EDIT|HIDDEN;");
    Add<CRTTIFieldInt, &CTestThing::m_Fixed>(
        rtti, "m_Fixed", "f:READONLY;e:EDIT|DESCRIPTION;d:a fixed number;");
    Add<CRTTIFieldInt, &CTestThing::m_Internal>(rtti, "m_Internal", "");
    Add<CRTTIFieldPointer, &CTestThing::m_Shape>(
        rtti, "m_Shape", "f:EDIT;e:BROWSE|DROP;", &CTestShape::s_RTTI);
    Add<CRTTIFieldPointerList, &CTestThing::m_Shapes>(
        rtti, "m_Shapes", "f:EDIT;e:BROWSE|DROP;", &CTestShape::s_RTTI);
}

bool CTestThing::AdoptObject(CRTTIField* pField, int iElement, CRTTIObject* pNew)
{
    if (pField->GetType() != RTTI_POINTER || iElement >= 0)
    {
        return false;
    }
    pOwn.reset(pNew);
    m_Shape = pNew;
    return true;
}

void CTestPropUser::SetFieldValue(CRTTIField* pField,
                                  const char* pszText,
                                  const PropObjects& objects)
{
    writes.push_back(std::string(pField->GetName()) + "=" + pszText + " x" +
                     std::to_string(objects.size()));
    HandleFieldEdit(objects, pField, pszText, -1);
    if (onWritten)
    {
        onWritten();
    }
}
