#pragma once

#include "framework/core/CMenu.h"
#include "framework/core/ResourceModule.h"
#include "host/ReflectionFields.h"
#include "tellur/proplist/CPropListCtrl.h"
#include "tests/framework/widgets/CTestForms.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/FakeFrontEnd.h"
#include "tests/support/TestHost.h"

#include <QApplication>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

#include <memory>

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

class CTestBox : public CTestShape
{
public:
    using CTestShape::CTestShape;

    static const CRTTI s_RTTI;
    static CRTTIObject* Create();

    const CRTTI* GetRTTI() const override { return &s_RTTI; }
};

class CTestBall : public CTestShape
{
public:
    using CTestShape::CTestShape;

    static const CRTTI s_RTTI;
    static CRTTIObject* Create();

    const CRTTI* GetRTTI() const override { return &s_RTTI; }
};

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
    std::vector<std::string> changes;
    std::unique_ptr<CRTTIObject> pOwn;
};

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
                         int iElement) override;

    bool PickObjects(const CRTTI* pClass, PropObjects& picked) override
    {
        return pList->ChooseObjects(pClass, picked);
    }

    EngineHost* GetEngineHost() override { return pEngine; }

    EditorHost* GetEditorHost() override { return &host; }

    std::string GetObjectName(const CRTTIObject*, int32_t iId) override
    {
        return "name" + std::to_string(iId);
    }

    void Notify(uint32_t uCommand) override { commands.push_back(uCommand); }

    bool QueryFlag() override { return bCommands; }

    CTestFace face;
    CTestHost host{face};
    EngineHost* pEngine = &host.GetEngine();
    CPropListCtrl* pList = nullptr;
    std::vector<std::string> writes; // "field=text xN"
    std::vector<uint32_t> commands;
    bool bCommands = false;
};

// A property list in a form of its own, with real editors and a window system that answers as the
// test says.
class CPropListTest : public testing::Test
{
protected:
    static constexpr uint32_t GRID = 21;

    CPropListTest();
    ~CPropListTest() override;

    void Show(const PropObjects& objects);

    QTreeView* View() { return m_Form.Find<QTreeView>(GRID); }

    int FindRow(const std::string& strName); // -1: not shown
    std::string Value(const std::string& strName);
    QPoint At(const std::string& strName, int iColumn = 1); // in the viewport
    void Edit(const std::string& strName);                  // clicks on its value

    std::vector<std::string> TakeWrites() { return std::exchange(m_User.writes, {}); }

    // The visible in-place editor of that kind; null when the row has none.
    template <class TWidget> TWidget* Editor()
    {
        for (TWidget* pWidget : View()->viewport()->findChildren<TWidget*>())
        {
            if (pWidget->isVisible())
            {
                return pWidget;
            }
        }
        return nullptr;
    }

    void Choose(const char* pszText); // in the combo box under edit, as by hand

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    CTestPropUser m_User;
    CFakeFrontEnd m_FrontEnd;
    CResourceScope m_Scope;
    CTestView m_Form;
    CPropListCtrl m_List;
    CTestThing m_Thing;
    CTestThing m_Other;
    CTestBox m_Box{11};
    CTestBall m_Ball{12};
};
