#include "host/ReflectionFields.h"
#include "tellur/plugin/CEditorAction.h"
#include "tests/support/ParseNodes.h"
#include "tests/tellur/plugin/PluginFixture.h"

namespace
{

// A process with fields of its own and of a base class.
class CBaseProcess : public CEditorProcess
{
public:
    static const CRTTI s_RTTI;

    static void RegisterFields(CRTTI& rtti)
    {
        rtti.RegisterField(
            new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CBaseProcess, iCount)), "m_Count", "f:EDIT;");
    }

    int32_t iCount = 3;
};

class CDerivedProcess : public CBaseProcess
{
public:
    static const CRTTI s_RTTI;

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    IEditorAction* Clone() const override { return new CDerivedProcess(*this); }

    const char* GetName() const override { return "Derived"; }

    bool CanExecute(uintptr_t, uintptr_t, uintptr_t) override { return true; }

    bool Execute() override { return true; }

    static void RegisterFields(CRTTI& rtti)
    {
        rtti.RegisterField(new CRTTIFieldString(RTTI_MEMBER_ADDRESS(CDerivedProcess, strNote)),
                           "m_Note",
                           "f:EDIT;");
    }

    std::string strNote = "two words";
};

const CRTTI CBaseProcess::s_RTTI("CBaseProcess",
                                 3,
                                 nullptr,
                                 &CEditorProcess::s_RTTI,
                                 CRTTI::FLAG_ABSTRACT,
                                 &CBaseProcess::RegisterFields);
const CRTTI CDerivedProcess::s_RTTI("CDerivedProcess",
                                    3,
                                    nullptr,
                                    &CBaseProcess::s_RTTI,
                                    CRTTI::FLAG_NONE,
                                    &CDerivedProcess::RegisterFields);

class CEditorActionTest : public CPluginFixture
{
protected:
    std::string Save(IEditorAction& action)
    {
        return Write([&action](fs::ifile& file) { action.SaveAttribs(file); });
    }

    void Load(NodeOwner pBlock)
    {
        CTCPARSE_KEYWORD parent;
        parent.block = pBlock.release(); // the parent's
        m_Process.LoadAttribs(&parent);
    }

    CDerivedProcess m_Process;
};

} // namespace

TEST_F(CEditorActionTest, FieldsAreSavedFromTheDerivedClassToItsBases)
{
    EXPECT_EQ(Save(m_Process),
              "  attrib( \"m_Note\", \"two words\" )\n"
              "  attrib( \"m_Count\", \"3\" )\n");
}

TEST_F(CEditorActionTest, LoadingSkipsWhatIsNoAttribOfTheObject)
{
    Load(Block({Node("attrib", {Text("m_Missing"), Text("8")}),
                Node("ATTRIB", {Text("m_Count"), Text("9")}),
                Node("attrib", {Text("m_count"), Text("8")}),
                Node("attrib", {Text("m_Count"), Text("eight")}),
                Node("attribute", {Text("m_Count"), Text("8")}),
                Node("attrib"),
                Node("attrib", {Int(1), Text("8")}),
                Node("attrib", {Text("m_Count")}),
                Node("attrib", {Text("m_Count"), Int(8)})}));
    EXPECT_EQ(m_Process.iCount, 9);
    m_Process.LoadAttribs(nullptr);
    EXPECT_EQ(m_Process.iCount, 9);
    EXPECT_EQ(m_Log.GetText(), "") << "skipped without a message";
}

TEST_F(CEditorActionTest, TheRegisteredProcessExportsTheWholeTerrain)
{
    Initialize();
    ASSERT_EQ(m_Host.GetRegistry().GetProcessCount(), 1U);
    IEditorAction& process = *m_Host.GetRegistry().GetProcess(0);
    EXPECT_EQ(process.GetNameString(), "Export terrain to STL format");
    EXPECT_TRUE(process.CanExecute(0, 0, 0));
    EXPECT_STREQ(process.GetRTTIObject()->GetClassNameA(), "CTellurProcessExportTerrainToSTL");
    EXPECT_EQ(Save(process), "");

    const std::string strAsk = "Host.BrowseForFile(0, stl, null, data, STL files (*.stl)|*.stl)";
    EXPECT_FALSE(process.Execute()) << "cancelled";
    EXPECT_EQ(TakeCalls(), Lines{strAsk});
    m_Face.strBrowseAnswer = "all.stl";
    EXPECT_TRUE(process.Execute());
    EXPECT_EQ(ReadBytes(m_Folder.Path("all.stl")).size(), 84U + 50 * 2 * 8 * 8) << "all triangles";
    m_Face.strBrowseAnswer = "nowhere/all.stl";
    EXPECT_TRUE(process.Execute()) << "what the terrain answers is not looked at";
    m_Host.GetWorld().CloseTerrain();
    TakeCalls();
    EXPECT_FALSE(process.Execute());
    EXPECT_EQ(TakeCalls(), Lines{}) << "no terrain: not even asked";
}

TEST_F(CEditorActionTest, AProcessStartsWithFlagTwoAndACloneKeepsFlagsAlone)
{
    Initialize();
    IEditorAction& process = *m_Host.GetRegistry().GetProcess(0);
    EXPECT_EQ(process.GetId(), 0) << "the host's number";
    EXPECT_EQ(process.TestFlag(0xFFFFFFFFU), 2U);
    process.SetFlag(0x14, true);
    process.SetId(40);
    const std::unique_ptr<IEditorAction> pClone(process.Clone());
    EXPECT_EQ(pClone->GetId(), -1);
    EXPECT_EQ(pClone->TestFlag(0xFFFFFFFFU), 0x16U);
    process.SetFlag(0xE, false); // one of them was not set
    EXPECT_EQ(process.TestFlag(0xFFFFFFFFU), 0x10U);
    EXPECT_EQ(pClone->TestFlag(2), 2U) << "flags are its own";
}

TEST_F(CEditorActionTest, ObjectsAreFoundOnceThePluginHasPublishedTheEngine)
{
    ASSERT_TRUE(m_Host.GetEngine().AddObject(9, &m_Process));
    CEditorAction::PublishEngineHost(nullptr);
    EXPECT_EQ(m_Process.FindObjectByID(9), nullptr);
    Initialize();
    EXPECT_EQ(m_Process.FindObjectByID(9), &m_Process);
    EXPECT_EQ(m_Process.FindObjectByID(8), nullptr);
    m_Plugin->OnHostNotify(NOTIFY_HOST_GOES, 0);
    EXPECT_EQ(m_Process.FindObjectByID(9), nullptr) << "the engine has gone";
}
