#pragma once

#include "framework/core/CMenu.h"
#include "host/ReflectionFields.h"
#include "tellur/proplist/IPropListCtrlUser.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/FakeFrontEnd.h"
#include "tests/support/TestHost.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using Texts = std::vector<std::string>;

// What pointers point to: an abstract class with two that can be made.
class CTestShape : public CRTTIObject
{
public:
    static const CRTTI s_RTTI;

    explicit CTestShape(int32_t iObjectId = 0)
        : iId(iObjectId)
    {
    }

    int32_t GetObjectId() const override { return iId; }

    bool IsStaticObject() const override { return bStatic; }

    int32_t iId;
    bool bStatic = false;
    int32_t m_Sides = 4;
};

// iMade: the identifier of what the class makes.
template <int32_t iMade> class CTestSolid : public CTestShape
{
public:
    using CTestShape::CTestShape;

    static const CRTTI s_RTTI;

    static CRTTIObject* Create() { return new CTestSolid(iMade); }

    const CRTTI* GetRTTI() const override { return &s_RTTI; }
};

using CTestBox = CTestSolid<77>;
using CTestBall = CTestSolid<78>;
template <> const CRTTI CTestBox::s_RTTI;
template <> const CRTTI CTestBall::s_RTTI;

// An object with a field of every sort. It owns what is made for its pointer.
class CTestThing : public CRTTIObject
{
public:
    static const CRTTI s_RTTI;
    static void RegisterFields(CRTTI& rtti);

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    bool AdoptObject(CRTTIField* pField, int iElement, CRTTIObject* pNew) override;

    void OnFieldChanged(CRTTIField* pField) override { changes.emplace_back(pField->GetName()); }

    float m_Share = 0.5F; // 0 to 1
    float m_Free = 2.0F;
    int32_t m_Count = 7;
    bool m_On = true;
    int32_t m_Kind = 2;
    uint32_t m_Bits = 5;
    SVec3 m_Place = {1.0F, 2.0F, 3.0F};
    SVec3 m_Color = {1.0F, 0.5F, 0.0F};
    SMatrix4 m_Frame;
    std::string m_File = "&root&/a.png";
    std::string m_Folder;
    int32_t m_Secret = 1;
    int32_t m_Fixed = 9;
    int32_t m_Internal = 0;
    CRTTIObject* m_Shape = nullptr;
    std::vector<CRTTIObject*> m_Shapes;
    Texts changes;
    std::unique_ptr<CRTTIObject> pOwn;
};

// Writes down what it is asked. What it hands back to a property list goes where the test says.
class CTestPropUser : public IPropListCtrlUser
{
public:
    void
    SetFieldValue(CRTTIField* pField, const char* pszText, const PropObjects& objects) override;

    void AddContextMenuItems(CMenu& menu, CRTTIField*, int) override
    {
        menu.InsertItem(100, PROP_COMMAND_USER + 1, "Mine");
    }

    const char* GetNoChangeText(const CRTTIObject*) override { return "<no_change>"; }

    bool HandleFieldEdit(const PropObjects& objects,
                         CRTTIField* pField,
                         const char* pszValue,
                         int iElement) override
    {
        return onEdit(objects, pField, pszValue, iElement);
    }

    bool PickObjects(const CRTTI* pClass, PropObjects& picked) override
    {
        return onPick(pClass, picked);
    }

    EngineHost* GetEngineHost() override { return &host.GetEngine(); }

    EditorHost* GetEditorHost() override { return &host; }

    std::string GetObjectName(const CRTTIObject*, int32_t iId) override
    {
        return "name" + std::to_string(iId);
    }

    void Notify(uint32_t uCommand) override { commands.push_back(uCommand); }

    bool QueryFlag() override { return bCommands; }

    CTestFace face;
    CTestHost host{face};
    std::function<bool(const PropObjects&, CRTTIField*, const char*, int)> onEdit;
    std::function<bool(const CRTTI*, PropObjects&)> onPick;
    std::function<void()> onWritten; // after a value reached the objects, inside SetFieldValue
    Texts writes;                    // "field=text xN"
    std::vector<uint32_t> commands;
    bool bCommands = false;
};

// Two things to show, and two objects of the engine that pointers can point to.
class CPropThingsTest : public testing::Test
{
protected:
    CPropThingsTest()
    {
        m_User.host.GetEngine().AddObject(11, &m_Box);
        m_User.host.GetEngine().AddObject(12, &m_Ball);
    }

    Texts TakeWrites() { return std::exchange(m_User.writes, {}); }

    CLogCatcher m_Log;
    CTestPropUser m_User;
    CFakeFrontEnd m_FrontEnd;
    CTestThing m_Thing;
    CTestThing m_Other;
    CTestBox m_Box{11};
    CTestBall m_Ball{12};
};
