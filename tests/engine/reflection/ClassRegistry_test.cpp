#include "tests/engine/reflection/CSample.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace
{

// Derives from CSample, hides its "int" and adds one that may only be looked at.
class CDerived : public CSample
{
public:
    const CRTTI* GetRTTI() const override { return &GetClass(); }

    static const CRTTI& GetClass()
    {
        static const CRTTI s_Class(
            "Derived",
            3,
            nullptr,
            &CSample::GetClass(),
            CRTTI::FLAG_ABSTRACT | CRTTI::FLAG_INTERFACE,
            [](CRTTI& own)
            {
                auto* pOwn = new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CDerived, m_OwnInt));
                auto* pShown = new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CDerived, m_Shown));
                own.RegisterField(pOwn, "int", "f:EDIT;e:EDIT;");
                own.RegisterField(pShown, "shown", "f:READONLY;");
            });
        return s_Class;
    }

    int32_t m_OwnInt = 1;
    int32_t m_Shown = 2;
};

// Counts its ends.
class CCountedField : public CRTTIFieldInt
{
public:
    using CRTTIFieldInt::CRTTIFieldInt;

    ~CCountedField() override { ++s_Ends; }

    inline static int s_Ends = 0;
};

} // namespace

TEST(CRTTI, ClassesEnterTheRegistryAndLeaveIt)
{
    const size_t nBefore = CRTTI::GetClasses().size();
    auto pFirst = std::make_unique<CRTTI>("Zeta", 1, nullptr, nullptr, CRTTI::FLAG_NONE);
    auto pSecond = std::make_unique<CRTTI>("Alpha", 1, nullptr, pFirst.get(), CRTTI::FLAG_NONE);
    auto pDouble = std::make_unique<CRTTI>("Alpha", 1, nullptr, nullptr, CRTTI::FLAG_NONE);
    const std::vector<const CRTTI*> classes = CRTTI::GetClasses();
    ASSERT_EQ(classes.size(), nBefore + 3);
    EXPECT_EQ(classes[nBefore], pFirst.get());
    EXPECT_EQ(classes[nBefore + 1], pSecond.get());
    EXPECT_EQ(CRTTI::FindClass("Alpha"), pSecond.get());
    EXPECT_EQ(CRTTI::FindClass("alpha"), nullptr);
    EXPECT_EQ(CRTTI::FindClass(nullptr), nullptr);
    EXPECT_TRUE(pFirst->NameGreater(*pSecond));
    EXPECT_FALSE(pSecond->NameGreater(*pFirst));
    EXPECT_FALSE(pSecond->NameGreater(*pDouble));
    pSecond.reset();
    EXPECT_EQ(CRTTI::FindClass("Alpha"), pDouble.get());
    pDouble.reset();
    EXPECT_EQ(CRTTI::FindClass("Alpha"), nullptr);
    EXPECT_EQ(CRTTI::FindClass("Zeta"), pFirst.get());
    pFirst.reset();
    EXPECT_EQ(CRTTI::GetClasses().size(), nBefore);
}

TEST(CRTTI, OwnsItsFieldsAndKeepsTheirOrder)
{
    const int& nEnds = CCountedField::s_Ends;
    {
        CRTTI own("Own", 1, nullptr, nullptr, CRTTI::FLAG_NONE);
        EXPECT_FALSE(own.AddField(nullptr));
        for (const char* pszName : {"zeta", "alpha", "zeta"})
        {
            auto* pField = new CCountedField(RTTI_MEMBER_ADDRESS(CSample, m_Int));
            ASSERT_TRUE(pField->Initialize(pszName, "f:EDIT;"));
            const bool bNew = own.GetFields().size() < 2;
            EXPECT_EQ(own.AddField(pField), bNew);
        }
        EXPECT_EQ(nEnds, 1);
        ASSERT_EQ(own.GetFields().size(), 2U);
        EXPECT_STREQ(own.GetFields()[0]->GetName(), "zeta");
        EXPECT_STREQ(own.GetFields()[1]->GetName(), "alpha");
    }
    EXPECT_EQ(nEnds, 3);
}

TEST(CRTTIDeathTest, AFieldThatCannotBeRegisteredEndsTheStart)
{
    CRTTI own("SetHeightFunction", 2, nullptr, nullptr, CRTTI::FLAG_NONE);
    const auto makeField = []
    {
        return new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CSample, m_Int));
    };
    const testing::ExitedWithCode leaves(3);
    const std::string strLine = "^RTTI FATAL ERROR SetHeightFunction.m_Mode: ";
    EXPECT_EXIT(
        own.RegisterField(makeField(), "m_Mode", "e:NONE;"), leaves, strLine + "e:NONE;\n$");
    EXPECT_EXIT(own.RegisterField(nullptr, "m_Mode", nullptr), leaves, strLine + "\n$");
    own.RegisterField(makeField(), "m_Mode", "f:EDIT;");
    EXPECT_EXIT(
        own.RegisterField(makeField(), "m_Mode", "e:EDIT;"), leaves, strLine + "e:EDIT;\n$");
}

TEST(CRTTIObject, KnowsItsClassAndItsFamily)
{
    CDerived derived;
    const CSample sample;
    EXPECT_TRUE(derived.FromClass(&CSample::GetClass()));
    EXPECT_FALSE(derived.IsExactClass(&CSample::GetClass()));
    EXPECT_FALSE(sample.FromClass(&CDerived::GetClass()));
    EXPECT_FALSE(sample.FromClass(static_cast<const CRTTI*>(nullptr)));
    EXPECT_TRUE(derived.FromClass(3) && derived.FromClass(CSample::FAMILY));
    EXPECT_TRUE(derived.IsExactEngineClass(3));
    EXPECT_FALSE(derived.IsExactEngineClass(CSample::FAMILY) || derived.FromEngineClass(9));
    EXPECT_EQ(CDerived::GetClass().Create(), nullptr);
    const std::unique_ptr<CRTTIObject> pCreated(CSample::GetClass().Create());
    EXPECT_TRUE(pCreated->IsExactClass(&CSample::GetClass()));

    EXPECT_EQ(derived.FindField("int"), CDerived::GetClass().GetFields()[0]);
    EXPECT_EQ(derived.FindField("float"), sample.FindField("float"));
    EXPECT_EQ(derived.FindField("Float"), nullptr);
    EXPECT_EQ(derived.FindField(nullptr), nullptr);
    ASSERT_TRUE(derived.FindField("int")->FromString(&derived, "5"));
    EXPECT_EQ(derived.m_OwnInt, 5);
    EXPECT_EQ(derived.m_Int, 0);
}

TEST(CRTTIObject, TypedAccessTakesOnlyItsTypeAndItsOwnFields)
{
    CDerived derived;
    int32_t iValue = -1;
    float fFloat = -1.0F;
    double fDouble = -1.0;
    bool bBool = false;
    std::string strText;
    EXPECT_TRUE(derived.SetFieldIntEditor(derived.FindField("int"), 4));
    EXPECT_TRUE(derived.SetFieldFloatEditor(derived.FindField("float"), 1.5F));
    EXPECT_TRUE(derived.SetFieldDoubleEditor(derived.FindField("double"), 2.5));
    EXPECT_TRUE(derived.SetFieldBoolEditor(derived.FindField("bool"), true));
    EXPECT_TRUE(derived.SetFieldStringEditor(derived.FindField("string"), "text"));
    EXPECT_EQ(derived.changed,
              (std::vector<std::string>{"int", "float", "double", "bool", "string"}));
    EXPECT_TRUE(derived.GetFieldIntEditor(derived.FindField("int"), iValue));
    EXPECT_TRUE(derived.GetFieldFloatEditor(derived.FindField("float"), fFloat));
    EXPECT_TRUE(derived.GetFieldDoubleEditor(derived.FindField("double"), fDouble));
    EXPECT_TRUE(derived.GetFieldBoolEditor(derived.FindField("bool"), bBool));
    EXPECT_TRUE(derived.GetFieldStringEditor(derived.FindField("string"), strText));
    EXPECT_TRUE(iValue == 4 && fFloat == 1.5F && fDouble == 2.5 && bBool && strText == "text");

    CSample sample;
    derived.changed.clear();
    EXPECT_TRUE(derived.GetFieldIntEditor(derived.FindField("shown"), iValue) && iValue == 2);
    EXPECT_FALSE(derived.SetFieldIntEditor(derived.FindField("shown"), 3));
    EXPECT_FALSE(derived.SetFieldIntEditor(derived.FindField("enum"), 1));
    EXPECT_FALSE(derived.SetFieldIntEditor(nullptr, 1));
    EXPECT_FALSE(derived.SetFieldFloatEditor(derived.FindField("float"), NAN));
    EXPECT_FALSE(derived.SetFieldStringEditor(derived.FindField("string"), nullptr));
    EXPECT_FALSE(sample.SetFieldIntEditor(derived.FindField("shown"), 1));
    EXPECT_FALSE(sample.GetFieldIntEditor(derived.FindField("shown"), iValue));
    EXPECT_FALSE(derived.GetFieldIntEditor(derived.FindField("uint"), iValue));
    EXPECT_TRUE(derived.changed.empty());
    EXPECT_EQ(iValue, 2);
}
