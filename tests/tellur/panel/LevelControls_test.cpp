// The level's controls of the panel: resolution, height map, normals, material.

#include "tellur/modes/CTerraformingState.h"
#include "tests/tellur/panel/PanelFixture.h"

#include <QCheckBox>
#include <QComboBox>

namespace
{

class CLevelControls : public CPanelFixture
{
protected:
    ~CLevelControls() override { GetTerraformingState().SetEditMaterial(nullptr); }

    QComboBox* List() { return Find<QComboBox>(PANEL_RESOLUTION); }

    void Choose(const char* pszText)
    {
        const int iItem = List()->findText(pszText);
        List()->setCurrentIndex(iItem);
        emit List()->activated(iItem); // as the list that drops down does it
    }
};

} // namespace

TEST_F(CLevelControls, AnotherResolutionIsAskedForFirst)
{
    m_Host.NewLevel(256, {80.0F, 1000.0F, 80.0F});
    ASSERT_NO_FATAL_FAILURE(OpenView());
    ASSERT_EQ(List()->count(), 8);
    EXPECT_EQ(List()->itemText(0), "33x33");
    EXPECT_EQ(List()->itemText(7), "4097x4097");
    EXPECT_EQ(List()->currentText(), "257x257");
    for (const EMessageBoxAnswer eAnswer : {EMessageBoxAnswer::No, EMessageBoxAnswer::Cancel})
    {
        m_FrontEnd.eAnswer = eAnswer;
        Choose("129x129");
        EXPECT_EQ(std::exchange(m_FrontEnd.calls, {}),
                  Calls{"FrontEnd.MessageBox(Are You sure You want to change terrain resolution "
                        "from 257x257 to 129x129?, 0x24)"});
        EXPECT_EQ(List()->currentText(), "257x257");
    }
    m_FrontEnd.eAnswer = EMessageBoxAnswer::Yes;
    Choose("129x129");
    EXPECT_EQ(m_FrontEnd.calls.size(), 1U);
    EXPECT_EQ(m_Host.GetTerrain().GetVerticesX(), 129U);
    EXPECT_EQ(List()->currentText(), "129x129");
    m_FrontEnd.calls.clear();
    Choose("129x129");
    EXPECT_EQ(m_FrontEnd.calls, Calls{});

    m_Host.NewLevel(100, {80.0F, 1000.0F, 80.0F});
    EXPECT_EQ(List()->currentIndex(), -1);
    m_Host.GetWorld().CloseTerrain();
    m_Plugin->OnHostNotify(NOTIFY_LEVEL_CHANGED, 0);
    Choose("65x65");
    EXPECT_EQ(m_FrontEnd.calls, Calls{});
}

TEST_F(CLevelControls, HeightMapNormalsAndMaterial)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Click(PANEL_SAVE_HEIGHT_MAP);
    const Lines calls = TakeCalls();
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].find("Host.BrowseForFile(0, height, "), 0U) << calls[0];
    m_Host.SetHeight(3, 3, 9.0F);
    Click(PANEL_UPDATE_NORMALS);
    EXPECT_FALSE(m_Host.GetTerrain().UpdateNormals()) << "they are up to date";
    Click(PANEL_AUTO_NORMALS);
    EXPECT_TRUE(m_Plugin->IsAutoUpdateNormals());
    Click(PANEL_AUTO_NORMALS);
    EXPECT_FALSE(m_Plugin->IsAutoUpdateNormals());

    Click(PANEL_MATERIAL_BROWSE);
    EXPECT_EQ(TakeCalls(),
              Lines{"Host.BrowseForFile(1, mat, , data, Material files (*.mat)|*.mat)"});
    m_Face.strBrowseAnswer = "data/materials/slope.mat";
    Click(PANEL_MATERIAL_BROWSE);
    EXPECT_EQ(Text(PANEL_MATERIAL), "data/materials/slope.mat");
    EXPECT_EQ(GetTerraformingState().GetEditMaterial(), "data/materials/slope.mat");
    EXPECT_EQ(m_Host.GetTerrain().GetEditMaterial(), "") << "not shown while the mode is off";
    Take(PANEL_BLUR);
    EXPECT_EQ(m_Host.GetTerrain().GetEditMaterial(), "data/materials/slope.mat");
    m_Face.strBrowseAnswer = "data/materials/grey.mat";
    Click(PANEL_MATERIAL_BROWSE);
    EXPECT_EQ(m_Host.GetTerrain().GetEditMaterial(), "data/materials/grey.mat");
    m_Plugin->SetAutoUpdateNormals(true);
    CloseView();
    ASSERT_NO_FATAL_FAILURE(OpenView());
    EXPECT_EQ(Text(PANEL_MATERIAL), "data/materials/grey.mat");
    EXPECT_TRUE(Find<QCheckBox>(PANEL_AUTO_NORMALS)->isChecked());
    EXPECT_EQ(m_Log.GetText(), "");
}
