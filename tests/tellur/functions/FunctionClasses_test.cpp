#include "framework/core/CResourceScope.h"
#include "framework/core/Cursor.h"
#include "tellur/functions/CBlurFunction.h"
#include "tellur/functions/CPointHeightFunction.h"
#include "tellur/functions/CPosterizeFunction.h"
#include "tellur/functions/CRampFunction.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/functions/CSetHeightFunction.h"
#include "tellur/resources/PluginResources.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/ParseNodes.h"
#include "tests/tellur/functions/FunctionParts.h"

#include <gtest/gtest.h>

// What all function classes have in common: names, fields, cursors, merge rules, their block in a
// brush file.

namespace
{

struct SField
{
    const char* pszName;
    ERTTIType eType;
    uint32_t uEditFlags;
    const char* pszDescription;
    const char* pszDefault;
    const char* pszOther; // another text it takes
};

struct SClass
{
    const char* pszClassName;     // in files
    const char* pszReflectedName; // in the reflection and in messages
    const char* pszParent;
    ITellurFunction* (*pCreate)();
    ITellurFunction* (*pCreateNameless)();
    uint32_t uCursor;
    const char* pszNoCursor;
    const char* pszNoName;
    std::vector<SField> fields;
};

template <class TFunction> ITellurFunction* Create()
{
    return new TFunction;
}

// The class as it is, but for its name.
template <class TFunction> class CNameless : public TFunction
{
public:
    const char* GetClassName() const override { return nullptr; }
};

template <class TFunction>
SClass Describe(const char* pszClassName,
                const char* pszReflectedName,
                const char* pszParent,
                uint32_t uCursor,
                const std::vector<SField>& fields)
{
    return {pszClassName,
            pszReflectedName,
            pszParent,
            &Create<TFunction>,
            &Create<CNameless<TFunction>>,
            uCursor,
            "no cursor handle",
            "no name",
            fields};
}

std::vector<SClass> GetClasses()
{
    const SField mode = {"m_Mode", RTTI_ENUM, RTTI_EDIT_COMBO, "mode", "mode_default", "mode_max"};
    const SField destOnly = {"m_UseOnlyDestBuffer",
                             RTTI_BOOL,
                             RTTI_EDIT_CHECKBOX,
                             "use only destination buffer",
                             "1",
                             "0"};
    const uint32_t uEdit = RTTI_EDIT_EDIT;
    // clang-format off
    std::vector<SClass> classes = {
        Describe<CBlurFunction>("BlurFunction", "CBlurFunction", "CPainterFunction", 2108,
            {mode, {"m_NeighbourhoodSize", RTTI_INT, uEdit, "neighbourhood size", "2", "5"}, destOnly}),
        Describe<CPosterizeFunction>("PosterizeFunction", "CPosterizeFunction", "CPainterFunction", 2115,
            {mode,
             {"m_NumHeightDivisions", RTTI_INT, uEdit, "number of height divisions", "1", "7"}, destOnly}),
        Describe<CRelativeHeightFunction>("RelativeHeightFunction", "CRelativeHeightFunction", "CPainterFunction", 2106,
            {{"m_Height", RTTI_FLOAT, uEdit, "Delta height [cm]", "500", "-2.5"}}),
        Describe<CSetHeightFunction>("SetHeightFunction", "CSetHeightFunction", "CPainterFunction", 2106,
            {mode, {"m_Height", RTTI_FLOAT, uEdit, "height to set [cm]", "500", "0.25"},
             {"m_PickHeight", RTTI_BOOL, RTTI_EDIT_CHECKBOX, "pick height at collision point", "0", "1"}}),
        Describe<CPointHeightFunction>("PointHeightFunction", "CPointHeightFunction", "CPointFunction", 2107, {}),
        Describe<CRampFunction>("RampFunction", "CRampFunction", "CTwoPointsFunction", 2110,
            {mode, {"m_SideInterpolation", RTTI_FLOAT, uEdit, "side interpolation", "1", "0.5"},
             {"m_FrontBackInterpolation", RTTI_FLOAT, uEdit, "front-back interpolation", "1", "0.5"}}),
    };
    // clang-format on
    for (size_t i = 4; i < 6; ++i) // these two say it in their own words
    {
        classes[i].pszNoCursor = "no cursor";
        classes[i].pszNoName = "no class name";
    }
    return classes;
}

std::string GetSaved(const ITellurFunction& function, int iIndent)
{
    const CTempFolder folder;
    fs::ifile file;
    EXPECT_TRUE(file.open(folder.Path("f").c_str(), fs::mode_write));
    EXPECT_TRUE(function.Save(file, iIndent));
    EXPECT_TRUE(file.close());
    return ReadBytes(folder.Path("f"));
}

} // namespace

TEST(FunctionClasses, AreReflectedWithTheirFieldsInOrder)
{
    for (const SClass& test : GetClasses())
    {
        SCOPED_TRACE(test.pszClassName);
        const CRTTI* pClass = CRTTI::FindClass(test.pszReflectedName);
        ASSERT_NE(pClass, nullptr);
        EXPECT_EQ(pClass->GetEngineClass(), 2);
        EXPECT_FALSE(pClass->IsAbstract());
        EXPECT_STREQ(pClass->GetBase()->GetClassNameA(), test.pszParent);
        EXPECT_TRUE(pClass->GetBase()->IsAbstract());
        EXPECT_STREQ(pClass->GetBase()->GetBase()->GetClassNameA(), "CTellurBaseFunction");
        EXPECT_EQ(pClass->GetBase()->GetBase()->GetBase(), nullptr);

        const std::unique_ptr<ITellurFunction> pFunction(test.pCreate());
        EXPECT_STREQ(pFunction->GetClassName(), test.pszClassName);
        EXPECT_EQ(pFunction->GetRTTIObject()->GetRTTI(), pClass);
        const std::unique_ptr<CRTTIObject> pMade(pClass->Create());
        EXPECT_TRUE(pMade->IsExactClass(pClass));

        ASSERT_EQ(pClass->GetFields().size(), test.fields.size());
        for (size_t i = 0; i < test.fields.size(); ++i)
        {
            const SField& field = test.fields[i];
            const CRTTIField* pField = pClass->GetFields()[i];
            SCOPED_TRACE(field.pszName);
            EXPECT_STREQ(pField->GetName(), field.pszName);
            EXPECT_EQ(pField->GetType(), field.eType);
            EXPECT_EQ(pField->GetFlags(), uint32_t{RTTI_FIELD_EDIT});
            EXPECT_EQ(pField->GetEditFlags(), field.uEditFlags);
            EXPECT_STREQ(pField->GetDescription(), field.pszDescription);
            EXPECT_EQ(GetField(*pFunction, field.pszName), field.pszDefault);
        }
    }
}

TEST(FunctionClasses, ShowTheirCursorOrSayThatTheyHaveNone)
{
    CFakeFrontEnd frontEnd;
    CLogCatcher log;
    for (const SClass& test : GetClasses())
    {
        SCOPED_TRACE(test.pszClassName);
        const std::unique_ptr<ITellurFunction> pBare(test.pCreate());
        EXPECT_FALSE(pBare->SetCursor());
        EXPECT_EQ(
            log.TakeLines(),
            Lines{std::string("[") + test.pszReflectedName + "::SetCursor] " + test.pszNoCursor});
        std::unique_ptr<ITellurFunction> pFunction;
        {
            const CResourceScope scope(&GetPluginResources());
            pFunction.reset(test.pCreate());
        }
        // A copy shares the handle, wherever it is made.
        const std::unique_ptr<ITellurFunction> pClone(pFunction->Clone());
        for (ITellurFunction* pShown : {pFunction.get(), pClone.get()})
        {
            frontEnd.pCursor = nullptr;
            EXPECT_TRUE(pShown->SetCursor());
            ASSERT_NE(frontEnd.pCursor, nullptr);
            EXPECT_EQ(frontEnd.pCursor->uId, test.uCursor);
        }
        EXPECT_EQ(log.GetText(), "");
    }
}

TEST(FunctionClasses, SaveTheirBlockAndReadItBack)
{
    for (const SClass& test : GetClasses())
    {
        SCOPED_TRACE(test.pszClassName);
        const std::unique_ptr<ITellurFunction> pFunction(test.pCreate());
        std::string strBlock = std::string("   function( \"") + test.pszClassName + "\" )\n   {\n";
        CTCPARSE_KEYWORD* pFirst = nullptr;
        CTCPARSE_KEYWORD** ppNext = &pFirst;
        for (const SField& field : test.fields)
        {
            strBlock += std::string("     attrib( \"") + field.pszName + "\", \"" + field.pszOther +
                        "\" )\n";
            *ppNext = Node("Attrib", {Text(field.pszName), Text(field.pszOther)});
            ppNext = &(*ppNext)->next;
        }
        const NodeOwner pBlock(pFirst);
        EXPECT_TRUE(pFunction->Load(pBlock.get()));
        EXPECT_EQ(GetSaved(*pFunction, 3), strBlock + "   }\n");
        const std::unique_ptr<ITellurFunction> pClone(pFunction->Clone());
        EXPECT_EQ(GetSaved(*pClone, 3), strBlock + "   }\n");
    }
}

TEST(FunctionClasses, SaveNothingWithoutAName)
{
    CLogCatcher log;
    for (const SClass& test : GetClasses())
    {
        SCOPED_TRACE(test.pszClassName);
        const std::unique_ptr<ITellurFunction> pNameless(test.pCreateNameless());
        const CTempFolder folder;
        fs::ifile file;
        ASSERT_TRUE(file.open(folder.Path("f").c_str(), fs::mode_write));
        EXPECT_FALSE(pNameless->Save(file, 2));
        EXPECT_EQ(file.tell(), 0U);
        EXPECT_EQ(log.TakeLines(),
                  Lines{std::string("[") + test.pszReflectedName + "::Save] " + test.pszNoName});
    }
}

TEST(FunctionClasses, LoadSkipsWhatItDoesNotKnow)
{
    CLogCatcher log;
    CSetHeightFunction function;
    const NodeOwner pBlock = Block({
        Node("ATTRIB", {Text("m_Height"), Text("12.5")}),
        Node("attrib", {Text("m_height"), Text("1")}), // names of fields count case
        Node("attrib", {Text("m_Nothing"), Text("1")}),
        Node("attrib"),
        Node("attrib", {Int(1), Text("1")}),
        Node("attrib", {Text("m_Height")}),
        Node("attrib", {Text("m_Height"), Float(3)}),
        Node("attrib", {Text("m_Height"), Text("high")}),
        Node("other", {Text("m_Height"), Text("4")}),
        Node("attrib", {Text("m_PickHeight"), Text("true")}),
        Node("attrib", {Text("m_Mode"), Text("mode_max")}),
    });
    EXPECT_TRUE(function.Load(pBlock.get()));
    EXPECT_EQ(GetField(function, "m_Height"), "12.5");
    EXPECT_EQ(GetField(function, "m_PickHeight"), "1");
    EXPECT_EQ(GetField(function, "m_Mode"), "mode_max");
    EXPECT_TRUE(function.Load(nullptr));
    EXPECT_EQ(GetField(function, "m_Height"), "12.5");
    EXPECT_EQ(log.GetText(), "");
}

TEST(FunctionClasses, MergeOneHeightByTheRuleTheyName)
{
    for (const SClass& test : GetClasses())
    {
        for (const char* pszDestOnly : {"1", "0"})
        {
            SCOPED_TRACE(testing::Message() << test.pszClassName << " " << pszDestOnly);
            const std::unique_ptr<ITellurFunction> pFunction(test.pCreate());
            bool bStrongest = std::string(test.pszParent) == "CPainterFunction";
            if (pFunction->GetRTTIObject()->FindField("m_UseOnlyDestBuffer") != nullptr)
            {
                SetField(*pFunction, "m_UseOnlyDestBuffer", pszDestOnly);
                bStrongest = *pszDestOnly == '0';
            }
            EXPECT_EQ(pFunction->GetMergeRule(),
                      bStrongest ? EMergeRule::Strongest : EMergeRule::Candidate);
            EXPECT_EQ(pFunction->MergeHeight(50, 60, 41), bStrongest ? 60.0F : 41.0F);
            EXPECT_EQ(pFunction->MergeHeight(50, 60, 40), 40.0F);
        }
    }
}
