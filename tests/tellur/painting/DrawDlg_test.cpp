// The draw dialog: what its controls allow, show and do, colours apart.

#include "tests/tellur/painting/PaintingFixture.h"

namespace
{

constexpr uint32_t FIRST_BOX = DRAW_RGB_VISIBLE;

class CDrawDlg : public CPaintingFixture
{
protected:
    void Slide(uint32_t uId, int iPos) { Find<QSlider>(uId)->setSliderPosition(iPos); }

    void ClickSpin(uint32_t uId, bool bUp)
    {
        QWidget* pSpin = Find(uId);
        QTest::mouseClick(
            pSpin, Qt::LeftButton, Qt::NoModifier, QPoint(3, bUp ? 2 : pSpin->height() - 2));
    }

    void Key(uint32_t uId, int iKey)
    {
        Find(uId)->setFocus();
        QTest::keyClick(Find(uId), static_cast<Qt::Key>(iKey));
    }

    float Extent() { return *Mode().GetBrushHalfSize(); }

    std::string BoxStates() // one letter a box: . disabled, 0 or 1
    {
        std::string strStates;
        for (uint32_t uId = FIRST_BOX; uId <= DRAW_ALPHA_EDITABLE; ++uId)
        {
            strStates += !IsOn(uId) ? '.' : IsChecked(uId) ? '1' : '0';
        }
        return strStates;
    }
};

} // namespace

TEST_F(CDrawDlg, OpensOnceWithTheModesValues)
{
    m_Plugin->OnCommand(4);
    const CTerrain2DDrawDlg* pFirst = m_Plugin->Get2DDrawDlg();
    ASSERT_NE(pFirst, nullptr);
    EXPECT_TRUE(Dialog().IsWindowVisible());
    EXPECT_EQ(Text(DRAW_POWER_EDIT), "1");
    EXPECT_EQ(Pos(DRAW_POWER_SLIDER), 100);
    EXPECT_EQ(Text(DRAW_HARDNESS_EDIT), "0");
    EXPECT_EQ(Pos(DRAW_HARDNESS_SLIDER), 0);
    EXPECT_EQ(Text(DRAW_EXTENT_EDIT), "500");
    EXPECT_EQ(Pos(DRAW_BLENDING), 50);
    EXPECT_TRUE(IsChecked(DRAW_CENTIMETRES));
    EXPECT_FALSE(IsChecked(DRAW_TEXEL_MAPPING));
    EXPECT_STREQ(Mode().GetBrushShapeName(), "data/brushes/round.png");
    EXPECT_NE(Mode().GetBrushShape(), nullptr);
    EXPECT_EQ(Dialog().GetWindowText(), "Edit bitmap on terrain");

    for (const bool bByKey : {true, false})
    {
        bByKey ? Key(DRAW_BITMAP_FILE, Qt::Key_Escape) : void(GetWidget(Dialog())->close());
        EXPECT_FALSE(Dialog().IsWindowVisible());
        m_Plugin->OnCommand(4);
        EXPECT_EQ(m_Plugin->Get2DDrawDlg(), pFirst);
        EXPECT_TRUE(Dialog().IsWindowVisible());
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CDrawDlg, WhatCanBeUsedFollowsFileModeAndBitmap)
{
    m_Plugin->OnCommand(4);
    EXPECT_FALSE(IsOn(DRAW_EDIT) || IsOn(DRAW_SAVE));
    EXPECT_TRUE(IsOn(DRAW_EXTENT_EDIT) && IsOn(DRAW_BITMAP_BROWSE));
    EXPECT_FALSE(IsOn(DRAW_SET) || IsOn(DRAW_MUL) || IsOn(DRAW_CENTIMETRES));
    EXPECT_EQ(BoxStates(), "..........");
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    EXPECT_TRUE(IsOn(DRAW_EDIT) && IsOn(DRAW_SAVE) && !IsChecked(DRAW_EDIT));

    Edit();
    EXPECT_TRUE(IsChecked(DRAW_EDIT));
    EXPECT_TRUE(IsOn(DRAW_SET) && IsOn(DRAW_MUL) && IsOn(DRAW_CENTIMETRES));
    EXPECT_TRUE(IsChecked(DRAW_SET));
    EXPECT_FALSE(IsChecked(DRAW_MUL) || IsOn(DRAW_BITMAP_BROWSE));
    EXPECT_EQ(BoxStates(), "1111111100");
    Click(DRAW_MUL);
    EXPECT_STREQ(Mode().GetFunctionName(), "Mul");
    EXPECT_TRUE(IsChecked(DRAW_MUL) && !IsChecked(DRAW_SET));
    Click(DRAW_MUL);
    EXPECT_TRUE(IsChecked(DRAW_MUL)) << "a second click leaves it";
    Click(DRAW_SET);

    m_Host.GetModes().DeactivateMode(0); // from elsewhere
    EXPECT_FALSE(IsChecked(DRAW_EDIT) || IsOn(DRAW_SET));
    EXPECT_TRUE(IsOn(DRAW_BITMAP_BROWSE));
    EXPECT_EQ(BoxStates(), "..........");
    ASSERT_NO_FATAL_FAILURE(WritePaletted("palette.png", {1, 2, 3, 4, 5, 6}, 0));
    Type(DRAW_BITMAP_FILE, "palette.png");
    Edit();
    EXPECT_TRUE(IsOn(DRAW_SET) && IsChecked(DRAW_SET));
    EXPECT_FALSE(IsOn(DRAW_MUL));
    EXPECT_EQ(BoxStates(), "..........") << "channels do not count";
    Dialog().SetExtentPointer(nullptr);
    Dialog().UpdateControls();
    EXPECT_FALSE(IsOn(DRAW_EXTENT_EDIT));
}

TEST_F(CDrawDlg, ChannelBoxesSetTheModesMask)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Edit();
    const std::pair<uint32_t, uint32_t> clicks[] = {{FIRST_BOX + 9, 0x601}, // alpha editable
                                                    {FIRST_BOX + 8, 0x601}, // refused
                                                    {FIRST_BOX + 3, 0x019}, // red editable
                                                    {FIRST_BOX + 4, 0x039}, // green visible
                                                    {FIRST_BOX + 1, 0x1FF}, // all editable
                                                    {FIRST_BOX + 0, 0x1FF}, // refused
                                                    {FIRST_BOX + 8, 0x3FF}};
    for (const auto& [uId, uMask] : clicks)
    {
        Click(uId);
        EXPECT_EQ(Mode().GetChannelMask(), uMask) << uId;
        EXPECT_EQ(m_Layer.GetChannelMask(), uMask) << uId;
        for (uint32_t i = 0; i < 10; ++i)
        {
            EXPECT_EQ(IsChecked(FIRST_BOX + i), (uMask & (2U << i)) != 0) << uId << " " << i;
        }
    }
    // What the mask says is what a stroke changes.
    Click(FIRST_BOX + 9);
    Stroke({{40, 0, 40}});
    EXPECT_EQ(At(3, 3), (Texel{10, 20, 30, 255}));
    Dialog().ChooseColor(std::array<float, 4>{0.5F, 1.0F, 1.0F, 1.0F}.data());
    Stroke({{40, 0, 40}});
    EXPECT_EQ(At(3, 3), (Texel{10, 20, 30, 128}));
}

TEST_F(CDrawDlg, PowerAndHardnessComeByTextArrowsAndSlider)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());

    const struct
    {
        uint32_t uEdit;
        uint32_t uSpin;
        uint32_t uSlider;
        float (ITerrain2DDrawDlgUser::*pGet)() const;
    } shares[] = {
        {DRAW_POWER_EDIT, DRAW_POWER_SPIN, DRAW_POWER_SLIDER, &ITerrain2DDrawDlgUser::GetPower},
        {DRAW_HARDNESS_EDIT,
         DRAW_HARDNESS_SPIN,
         DRAW_HARDNESS_SLIDER,
         &ITerrain2DDrawDlgUser::GetHardness}};

    for (const auto& one : shares)
    {
        SCOPED_TRACE(one.uEdit);
        const auto value = [&]
        {
            return (Mode().*one.pGet)();
        };
        Type(one.uEdit, "0,259"); // a comma is a point
        EXPECT_EQ(value(), 0.259F);
        EXPECT_EQ(Pos(one.uSlider), 25);
        Type(one.uEdit, "7");
        EXPECT_EQ(value(), 1.0F);
        EXPECT_EQ(Text(one.uEdit), "1");
        ClickSpin(one.uSpin, true);
        EXPECT_EQ(value(), 1.0F);
        ClickSpin(one.uSpin, false);
        EXPECT_EQ(value(), 0.99F);
        EXPECT_EQ(Text(one.uEdit), "0.99");
        Type(one.uEdit, "-2");
        EXPECT_EQ(value(), 0.0F);
        EXPECT_EQ(Pos(one.uSlider), 0);
        ClickSpin(one.uSpin, false);
        EXPECT_EQ(value(), 0.0F);
        ClickSpin(one.uSpin, true);
        EXPECT_EQ(value(), 0.01F);
        Slide(one.uSlider, 30);
        EXPECT_EQ(value(), 0.3F);
        EXPECT_EQ(Text(one.uEdit), "0.3");
        Key(one.uSlider, Qt::Key_Right);
        EXPECT_EQ(value(), 0.31F);
        Key(one.uSlider, Qt::Key_PageUp);
        EXPECT_EQ(value(), 0.51F);
        Key(one.uSlider, Qt::Key_Home);
        EXPECT_EQ(value(), 0.0F);
        Key(one.uSlider, Qt::Key_End);
        EXPECT_EQ(value(), 1.0F);
    }
}

TEST_F(CDrawDlg, TheExtentIsShownInBothUnits)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog()); // the reference length is 20, the bitmap 8 wide
    Edit();
    Slide(DRAW_EXTENT_SLIDER, 1000);
    EXPECT_FLOAT_EQ(Extent(), 20.0F);
    EXPECT_EQ(Text(DRAW_EXTENT_EDIT), "20");
    Slide(DRAW_EXTENT_SLIDER, 500);
    EXPECT_FLOAT_EQ(Extent(), 9.0F / 99.0F * 20.0F);
    EXPECT_EQ(Text(DRAW_EXTENT_EDIT), "2");
    Slide(DRAW_EXTENT_SLIDER, 0);
    EXPECT_EQ(Extent(), 0.0F);

    Type(DRAW_EXTENT_EDIT, "13");
    EXPECT_EQ(Extent(), 13.0F);
    EXPECT_EQ(Pos(DRAW_EXTENT_SLIDER), 907); // 1000 ln( 13 / 20 * 99 + 1 ) / ln 100
    Type(DRAW_EXTENT_EDIT, "6.9");
    EXPECT_EQ(Extent(), 6.0F) << "whole numbers are read";
    Type(DRAW_EXTENT_EDIT, "500");
    EXPECT_EQ(Extent(), 500.0F);
    EXPECT_EQ(Pos(DRAW_EXTENT_SLIDER), 1000);
    Type(DRAW_EXTENT_EDIT, "none");
    EXPECT_EQ(Extent(), 0.0F);

    Type(DRAW_EXTENT_EDIT, "13");
    Click(DRAW_CENTIMETRES);
    EXPECT_EQ(Extent(), 13.0F);
    EXPECT_EQ(Text(DRAW_EXTENT_EDIT), "5"); // 8 / 20 * 13 = 5.2
    EXPECT_EQ(Pos(DRAW_EXTENT_SLIDER), 907);
    Type(DRAW_EXTENT_EDIT, "3");
    EXPECT_EQ(Extent(), 7.5F);
    Click(DRAW_CENTIMETRES);
    EXPECT_EQ(Text(DRAW_EXTENT_EDIT), "8");
    EXPECT_EQ(Extent(), 7.5F) << "showing rounds, keeping does not";

    Edit(); // and on again with a file that is none: the unit stays, the bitmap's width is gone
    Click(DRAW_CENTIMETRES);
    WriteBytes(m_Folder.Path("none.png"), "none");
    Type(DRAW_BITMAP_FILE, "none.png");
    Edit();
    EXPECT_FALSE(IsOn(DRAW_CENTIMETRES));
    Type(DRAW_EXTENT_EDIT, "3");
    EXPECT_EQ(Extent(), 0.0F);
    Edit();
    Type(DRAW_BITMAP_FILE, "types.png");
    Edit();
    Click(DRAW_CENTIMETRES);
    Mode().GetBrushHalfSize()[0] = 7.5F;

    m_Host.GetWorld().CloseTerrain(); // no reference
    Click(DRAW_CENTIMETRES);
    EXPECT_EQ(Text(DRAW_EXTENT_EDIT), "0");
    EXPECT_EQ(Extent(), 7.5F);
}

TEST_F(CDrawDlg, BlendingMappingAndMaterialGoToTheLayer)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Slide(DRAW_BLENDING, 20);
    EXPECT_EQ(m_Layer.GetBlendFactor(), 0.5F) << "only while it is painted on";
    Edit();
    Slide(DRAW_BLENDING, 75);
    EXPECT_EQ(m_Layer.GetBlendFactor(), 0.75F);
    TakeCalls();
    Click(DRAW_TEXEL_MAPPING);
    EXPECT_EQ(m_Layer.GetTexelMapping(), ETexelMapping::Vertices);
    Click(DRAW_TEXEL_MAPPING);
    EXPECT_EQ(m_Layer.GetTexelMapping(), ETexelMapping::Centers);

    m_Face.strBrowseAnswer = "data/slope.mat";
    Click(DRAW_MATERIAL_BROWSE);
    EXPECT_EQ(TakeCalls(),
              Lines{"Host.BrowseForFile(1, mat, , data, Material files (*.mat)|*.mat)"});
    EXPECT_STREQ(m_Layer.GetMaterial(), "data/slope.mat");
    EXPECT_EQ(Text(DRAW_MATERIAL), "data/slope.mat");
    m_Face.strBrowseAnswer.clear();
    Click(DRAW_MATERIAL_BROWSE);
    EXPECT_STREQ(m_Layer.GetMaterial(), "data/slope.mat");

    Type(DRAW_MATERIAL, "data/grey.mat");
    EXPECT_STREQ(m_Layer.GetMaterial(), "data/slope.mat");
    Find(DRAW_BITMAP_FILE)->setFocus();
    EXPECT_STREQ(m_Layer.GetMaterial(), "data/grey.mat");

    // A user that has them all shows them.
    m_Layer.SetTexelToVertexMapping(true);
    m_Layer.SetMaterial("data/contours.mat");
    Mode().SetPower(0.5F);
    Mode().SetHardness(0.25F);
    Dialog().SetUser(&Mode());
    EXPECT_TRUE(IsChecked(DRAW_TEXEL_MAPPING));
    EXPECT_EQ(Text(DRAW_MATERIAL), "data/contours.mat");
    EXPECT_EQ(Pos(DRAW_POWER_SLIDER), 50);
    EXPECT_EQ(Text(DRAW_HARDNESS_EDIT), "0.25");
}

TEST_F(CDrawDlg, FilesAreChosenWithTheirOwnQuestions)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog(""));
    m_Face.strBrowseAnswer = "types.png";
    Click(DRAW_BITMAP_BROWSE);
    EXPECT_EQ(TakeCalls(),
              Lines{"Host.BrowseForFile(0, null, , data, Bitmap files (*.dds; *.png; *.jpg; *.tga)|"
                    "*.dds|*.png|*.jpg|*.tga)"});
    EXPECT_EQ(Text(DRAW_BITMAP_FILE), "types.png");
    EXPECT_TRUE(IsOn(DRAW_EDIT));
    Edit();
    m_Face.strBrowseAnswer = "types.png";
    Click(DRAW_SHAPE);
    EXPECT_EQ(TakeCalls(),
              Lines{"Host.BrowseForFile(1, null, white.png, data, "
                    "Bitmap files (*.jpg;*.png;*.dds)|*.jpg|*.png|*.dat)"});
    ASSERT_NE(m_Layer.GetBrushTexture(), nullptr);
    EXPECT_EQ(m_Layer.GetBrushTexture()->GetWidth(), 8U);
    EXPECT_STREQ(Mode().GetBrushShapeName(), "types.png");
    m_Face.strBrowseAnswer = "missing.png";
    Click(DRAW_SHAPE);
    EXPECT_STREQ(Mode().GetBrushShapeName(), "types.png");
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    Mode().SetBrushShape(nullptr, nullptr); // the name alone goes
    EXPECT_STREQ(Mode().GetBrushShapeName(), "");
    EXPECT_NE(Mode().GetBrushShape(), nullptr);
}

TEST_F(CDrawDlg, WithoutAUserItOnlyRefreshes)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Edit();
    Dialog().SetExtentPointer(nullptr);
    Dialog().SetUser(nullptr);
    const float fPower = Mode().GetPower();
    const uint32_t uMask = Mode().GetChannelMask();
    const std::string strBrush = Mode().GetBrushShapeName();
    m_Face.strBrowseAnswer = "types.png";
    TakeCalls();
    for (const uint32_t uId : {DRAW_UNDO,
                               DRAW_REDO,
                               DRAW_SHAPE,
                               DRAW_RGB_VISIBLE,
                               DRAW_MUL,
                               DRAW_TEXEL_MAPPING,
                               DRAW_FIRST_COLOR})
    {
        Click(uId);
    }
    Slide(DRAW_POWER_SLIDER, 10);
    Slide(DRAW_EXTENT_SLIDER, 10);
    ClickSpin(DRAW_HARDNESS_SPIN, true);
    EXPECT_EQ(Mode().GetPower(), fPower);
    EXPECT_EQ(Mode().GetChannelMask(), uMask);
    EXPECT_EQ(Mode().GetHardness(), 0.0F);
    EXPECT_EQ(Mode().GetBrushShapeName(), strBrush);
    EXPECT_STREQ(Mode().GetFunctionName(), "Set");
    EXPECT_EQ(TakeCalls(), Lines{});
    EXPECT_EQ(m_Log.GetText(), "");
}
