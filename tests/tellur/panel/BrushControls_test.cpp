// The brush of the panel: fields, sliders, spins, function buttons, shape and mask.

#include "host/Reflection.h"
#include "tellur/panel/PanelScale.h"
#include "tellur/resources/FunctionFaces.h"
#include "tests/tellur/panel/PanelFixture.h"

#include <QAbstractButton>
#include <QListWidget>

namespace
{

class CBrushControls : public CPanelFixture
{
protected:
    QImage Look(uint32_t uId) { return Find(uId)->grab().toImage(); }
};

} // namespace

TEST_F(CBrushControls, WithoutABrushOnlyWhatNeedsNoneCanBeUsed)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    const std::vector<uint32_t> always = {
        2130, 2131, 2133, 2132, 2160, 2137, 2192, 2113, 2120, 2138, 2127, 2139, 2129, 2205, 2206};
    const std::vector<uint32_t> brush = {2106, 2201, 2109, 2200, 2121, 2122, 2136,
                                         2119, 2115, 2128, 2204, 2187, 2203, 2193,
                                         2194, 2196, 2197, 2195, 2198, 2199, 2123};
    for (const bool bBrush : {false, true, false})
    {
        m_Plugin->SetCurrentBrush(bBrush ? m_Plugin->GetBrushContainer()->FindBrush("BlurFunction")
                                         : nullptr);
        for (const uint32_t uId : always)
        {
            EXPECT_TRUE(Find(uId)->isEnabled()) << uId;
        }
        for (const uint32_t uId : brush)
        {
            EXPECT_EQ(Find(uId)->isEnabled(), bBrush) << uId;
        }
    }
    EXPECT_EQ(Text(PANEL_POWER_EDIT), "0");
    EXPECT_EQ(Text(PANEL_EXTENT_EDIT), "0");
    EXPECT_EQ(Text(PANEL_MASK_PATH), "");
    EXPECT_EQ(m_Log.GetText(), "");
    Edit(PANEL_FADE_EDIT)->setText("3"); // which reports under the name of the power
    Slide(PANEL_POWER_SLIDER, 3);
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CTellurView::OnChangeEditPower] no current brush",
                     "[CTellurView::OnHScroll] no current brush"}));
}

TEST_F(CBrushControls, TheExtentsScaleFollowsItsLimits)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    EXPECT_EQ(Text(PANEL_MIN_EXTENT), "5");
    EXPECT_EQ(Text(PANEL_MAX_EXTENT), "8");
    Take(PANEL_SET_HEIGHT);
    Type(PANEL_MIN_EXTENT, "10");
    Type(PANEL_MAX_EXTENT, "110");
    Slide(PANEL_EXTENT_SLIDER, 16000);
    EXPECT_EQ(Brush()->GetExtent(), 60.0F);
    EXPECT_EQ(Text(PANEL_EXTENT_EDIT), "60");
    EXPECT_EQ(TakeCalls(), Lines{"Host.RedrawViews()"});
    Type(PANEL_MAX_EXTENT, "210");
    EXPECT_EQ(Slider(PANEL_EXTENT_SLIDER)->value(), 8000);
    EXPECT_EQ(Brush()->GetExtent(), 60.0F);

    Type(PANEL_EXTENT_EDIT, "5000"); // no limit counts for what is typed
    EXPECT_EQ(Brush()->GetExtent(), 5000.0F);
    EXPECT_EQ(Slider(PANEL_EXTENT_SLIDER)->value(), 32000);
    Type(PANEL_EXTENT_EDIT, "35");
    EXPECT_EQ(Slider(PANEL_EXTENT_SLIDER)->value(), 4000);
    Type(PANEL_MAX_EXTENT, "110");
    EXPECT_EQ(Slider(PANEL_EXTENT_SLIDER)->value(), 8000);
    m_Plugin->OnAction(1, 1, 1); // a key makes it 1/1280 of the terrain larger
    EXPECT_EQ(Slider(PANEL_EXTENT_SLIDER)->value(), 8020);
    Type(PANEL_MAX_EXTENT, "210");
    EXPECT_EQ(Slider(PANEL_EXTENT_SLIDER)->value(), 4010) << "what it shows now, not what it did";
    Slide(PANEL_FADE_SLIDER, 8000); // the fade distance has the extent's scale
    EXPECT_EQ(Brush()->GetFadeFactor(), 60.0F);

    // The limits last until the panel opens again.
    Type(PANEL_MIN_EXTENT, "3");
    m_Plugin->OnCommand(1);
    CloseView();
    ASSERT_NO_FATAL_FAILURE(OpenView());
    EXPECT_EQ(Text(PANEL_MIN_EXTENT), "3");
    EXPECT_EQ(Text(PANEL_MAX_EXTENT), "210");
    Type(PANEL_MIN_EXTENT, "4");
    m_View->UpdateView(); // an update brings back what was stored, kept on purpose
    EXPECT_EQ(Text(PANEL_MIN_EXTENT), "3");
}

TEST_F(CBrushControls, ScalesNeedATerrainAndRoom)
{
    EXPECT_EQ(GetExtentAt({-40.0F, 210.0F}, 16000), 105.0F) << "a negative end counts as 0";
    EXPECT_EQ(GetExtentPosition({210.0F, 210.0F}, 210.0F), 0);
    m_Host.GetWorld().CloseTerrain();
    EXPECT_EQ(GetExtentAt({10.0F, 110.0F}, 20000), 0.0F);
    EXPECT_EQ(GetDistancePosition({}, 500.0F), 0);
}

TEST_F(CBrushControls, TypedValuesAreClampedAndTwoFieldsWaitForTheirSpins)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    Type(PANEL_FADE_EDIT, "2000000");
    EXPECT_EQ(Brush()->GetFadeFactor(), 1000000.0F);
    EXPECT_EQ(Text(PANEL_FADE_EDIT), "1000000");
    EXPECT_EQ(Slider(PANEL_FADE_SLIDER)->value(), 32000);
    Type(PANEL_FADE_EDIT, "-5");
    EXPECT_EQ(Brush()->GetFadeFactor(), 0.0F);
    Type(PANEL_DISTANCE_EDIT, "1234"); // the terrain is 1000 high
    EXPECT_EQ(Brush()->GetVerticalDistance(), 1000.0F);
    Type(PANEL_DISTANCE_EDIT, "250");
    EXPECT_EQ(Brush()->GetVerticalDistance(), 250.0F);
    EXPECT_EQ(Slider(PANEL_DISTANCE_SLIDER)->value(), 250);

    // The panel listens elsewhere for these two, so a spin has to apply them.
    Type(PANEL_POWER_EDIT, "0.3");
    Type(PANEL_HARDNESS_EDIT, "5");
    EXPECT_EQ(Brush()->GetPowerModifier(), 1.0F);
    EXPECT_EQ(Brush()->GetHardness(), 0.0F);
    ClickSpin(PANEL_POWER_SPIN, true);
    EXPECT_FLOAT_EQ(Brush()->GetPowerModifier(), 0.31F);
    EXPECT_EQ(Slider(PANEL_POWER_SLIDER)->value(), 31);
    EXPECT_EQ(Text(PANEL_HARDNESS_EDIT), "5");
    ClickSpin(PANEL_HARDNESS_SPIN, false); // down is +1, which lowers it
    EXPECT_FLOAT_EQ(Brush()->GetHardness(), 4.99F);
    EXPECT_EQ(Slider(PANEL_HARDNESS_SLIDER)->value(), 100) << "the slider ends at 1";
    ClickSpin(PANEL_FADE_SPIN, true);
    EXPECT_EQ(Brush()->GetFadeFactor(), 1.0F);
    ClickSpin(PANEL_FADE_SPIN, false);
    ClickSpin(PANEL_FADE_SPIN, false);
    EXPECT_EQ(Brush()->GetFadeFactor(), 0.0F);
    ClickSpin(PANEL_DISTANCE_SPIN, true);
    EXPECT_EQ(Brush()->GetVerticalDistance(), 260.0F);
    QTest::keyClick(Edit(PANEL_DISTANCE_EDIT), Qt::Key_Down); // its spin's buddy
    EXPECT_EQ(Brush()->GetVerticalDistance(), 250.0F);
    QTest::keyClick(Edit(PANEL_POWER_EDIT), Qt::Key_Down); // the power's spin has none
    EXPECT_FLOAT_EQ(Brush()->GetPowerModifier(), 0.31F);
    Type(PANEL_POWER_EDIT, "7");
    ClickSpin(PANEL_POWER_SPIN, true);
    EXPECT_EQ(Brush()->GetPowerModifier(), 1.0F);
    EXPECT_EQ(Text(PANEL_POWER_EDIT), "1");
}

TEST_F(CBrushControls, SlidersGoByTheirCodes)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    QSlider* pPower = Slider(PANEL_POWER_SLIDER);
    pPower->setFocus();
    const auto press = [&](int iKey)
    {
        QTest::keyClick(pPower, static_cast<Qt::Key>(iKey));
        return Brush()->GetPowerModifier();
    };
    EXPECT_EQ(press(Qt::Key_Right), 1.0F) << "not beyond the end";
    EXPECT_FLOAT_EQ(press(Qt::Key_Left), 0.99F);
    EXPECT_FLOAT_EQ(press(Qt::Key_PageDown), 0.79F);
    EXPECT_FLOAT_EQ(press(Qt::Key_PageUp), 0.99F);
    EXPECT_EQ(press(Qt::Key_PageUp), 1.0F);
    EXPECT_EQ(press(Qt::Key_Home), 0.0F);
    EXPECT_FLOAT_EQ(press(Qt::Key_Left), 0.0F);
    EXPECT_EQ(press(Qt::Key_End), 1.0F);
    Slide(PANEL_POWER_SLIDER, 37);
    EXPECT_EQ(Brush()->GetPowerModifier(), 0.37F);
    EXPECT_EQ(Text(PANEL_POWER_EDIT), "0.37");
    Slide(PANEL_HARDNESS_SLIDER, 50);
    EXPECT_EQ(Brush()->GetHardness(), 0.5F);
    Slide(PANEL_DISTANCE_SLIDER, 640);
    EXPECT_EQ(Brush()->GetVerticalDistance(), 640.0F);
    Slide(PANEL_DISTANCE_SLIDER, 0);
    EXPECT_EQ(Brush()->GetVerticalDistance(), 0.0F);

    // Without the focus a wheel turns no slider.
    Edit(PANEL_FADE_EDIT)->setFocus();
    const QPointF at(pPower->width() / 2.0, 3.0);
    QWheelEvent wheel(at,
                      pPower->mapToGlobal(at),
                      {},
                      {0, 120},
                      Qt::NoButton,
                      Qt::NoModifier,
                      Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(pPower, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(Brush()->GetPowerModifier(), 0.37F);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CBrushControls, FunctionButtonsSwitchTheToolAndTheMode)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    const QImage off = Look(PANEL_BLUR);
    for (const SFunctionFace& function : GetFunctionFaces())
    {
        ASSERT_NE(Find(function.uButton), nullptr) << "the form has no " << function.pszFunction;
        Click(function.uButton);
        ASSERT_NE(Brush(), nullptr);
        EXPECT_STREQ(Brush()->GetFunctionName(), function.pszFunction);
        EXPECT_TRUE(IsTerraforming());
    }
    Click(PANEL_BLUR);
    EXPECT_NE(Look(PANEL_BLUR), off);
    Click(PANEL_RAMP);
    Find(PANEL_RAMP)->clearFocus();
    Find(PANEL_BLUR)->clearFocus();
    EXPECT_EQ(Look(PANEL_BLUR), off);
    m_Host.GetModes().DeactivateMode(0); // takes the brush along
    EXPECT_EQ(Brush(), nullptr);
    UseToolBrush("BlurFunction"); // current, but the mode is off
    Find(PANEL_BLUR)->setFocus();
    QTest::keyClick(Find(PANEL_BLUR), Qt::Key_Space);
    EXPECT_TRUE(IsTerraforming());
    EXPECT_STREQ(Brush()->GetFunctionName(), "BlurFunction");
    Click(PANEL_BLUR); // its own button puts it away
    EXPECT_EQ(Brush(), nullptr);
    EXPECT_FALSE(IsTerraforming());
    Find(PANEL_BLUR)->clearFocus();
    EXPECT_EQ(Look(PANEL_BLUR), off);
    // A press that is drawn off the button is no click, and leaves no button down that is not.
    QTest::mousePress(Find(PANEL_BLUR), Qt::LeftButton);
    EXPECT_NE(Look(PANEL_BLUR), off);
    QTest::mouseMove(Find(PANEL_BLUR), QPoint(-30, 3));
    QTest::mouseRelease(Find(PANEL_BLUR), Qt::LeftButton, Qt::NoModifier, QPoint(-30, 3));
    EXPECT_EQ(Brush(), nullptr);
    Find(PANEL_BLUR)->clearFocus();
    EXPECT_EQ(Look(PANEL_BLUR), off);
    CTellurBrush bare; // of no function: none of the buttons is its own, and one line says so
    m_Log.Clear();
    m_Plugin->SetCurrentBrush(&bare);
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"[CTellurBrush::GetFunctionName] no function"}));
    m_Plugin->SetCurrentBrush(nullptr);
    EnterSilentMode(7)->bMayLeave = false; // the host refuses: nothing looks pressed that is not
    Click(PANEL_BLUR);
    EXPECT_STREQ(Brush()->GetFunctionName(), "BlurFunction");
    EXPECT_FALSE(IsTerraforming());
}

TEST_F(CBrushControls, TheGridShowsTheFunctionAndKeysAndPicksRefreshIt)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    auto* pGrid = Find<QTreeView>(PANEL_GRID);
    const auto value = [pGrid](int iRow)
    {
        return pGrid->model()->index(iRow, 1).data().toString().toStdString();
    };
    ASSERT_EQ(pGrid->model()->rowCount(), 3);
    QTest::mouseClick(pGrid->viewport(),
                      Qt::LeftButton,
                      Qt::NoModifier,
                      pGrid->visualRect(pGrid->model()->index(1, 1)).center());
    auto* pEdit = pGrid->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(pEdit, nullptr);
    QTest::keyClicks(pEdit, "321");
    QTest::keyClick(pEdit, Qt::Key_Return);
    float fHeight = 0.0F;
    CRTTIObject* pFunction = Brush()->GetRTTIObject();
    CRTTIField* pField = pFunction->FindField("m_Height");
    ASSERT_TRUE(pFunction->GetFieldFloatEditor(pField, fHeight));
    EXPECT_EQ(fHeight, 321.0F);

    // During a drag the function picks a height: no window is made, nobody loses the keyboard.
    Edit(PANEL_FADE_EDIT)->setFocus();
    const auto nWidgets = QApplication::allWidgets().size();
    for (int i = 0; i < 50; ++i)
    {
        pFunction->SetFieldFloatEditor(pField, static_cast<float>(i));
        m_Plugin->OnFieldsChanged();
        m_Plugin->OnAction(1, 1, 1); // and the brush grows
    }
    EXPECT_EQ(value(1), "49");
    EXPECT_EQ(pEdit->text(), "49");
    EXPECT_EQ(Text(PANEL_EXTENT_EDIT), "3203.12"); // 50 steps of 1/1280 of the terrain's width
    EXPECT_EQ(QApplication::allWidgets().size(), nWidgets);
    EXPECT_EQ(QApplication::focusWidget(), Edit(PANEL_FADE_EDIT));
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    Take(PANEL_POINT_HEIGHT);
    EXPECT_EQ(pGrid->model()->rowCount(), 0);

    pGrid->setColumnWidth(0, 163);
    CloseView();
    EXPECT_NE(ReadBytes(m_Folder.Path("config/tellur/registry.ini"))
                  .find("[Software\\Tellur\\Montar\\Settings\\Tellur prop control columns info]"),
              std::string::npos);
    ASSERT_NO_FATAL_FAILURE(OpenView());
    EXPECT_EQ(Find<QTreeView>(PANEL_GRID)->columnWidth(0), 163);
}

TEST_F(CBrushControls, ShapeAndMaskComeFromFiles)
{
    std::filesystem::create_directory(m_Folder.Path("data"));
    WriteGrey("data/mask.png", 2, 2, {0, 85, 170, 255});
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    Click(PANEL_MASK_BROWSE);
    EXPECT_EQ(TakeCalls(),
              Lines{"Host.BrowseForFile(1, null, , data, Bitmap files (*.dds; *.png; *.jpg; "
                    "*.tga)|*.dds|*.png|*.jpg|*.tga)"})
        << "cancelled";
    m_Face.strBrowseAnswer = "data/mask.png";
    Click(PANEL_MASK_BROWSE);
    EXPECT_EQ(Brush()->GetMaskPath(), "data/mask.png");
    EXPECT_EQ(Text(PANEL_MASK_PATH), "data/mask.png");
    EXPECT_EQ(m_Host.GetEngine().GetTextures().GetCount(), 1U);
    EXPECT_TRUE(Brush()->IsMaskEnabled()) << "a new mask counts";
    Click(PANEL_MASK_ENABLED);
    EXPECT_FALSE(Brush()->IsMaskEnabled());
    Click(PANEL_MASK_ENABLED);
    EXPECT_TRUE(Brush()->IsMaskEnabled());
    const auto isChecked = [this]
    {
        return Find<QAbstractButton>(PANEL_MASK_ENABLED)->isChecked();
    };
    Take(PANEL_BLUR);
    EXPECT_FALSE(isChecked()) << "another brush without a mask";
    Take(PANEL_SET_HEIGHT);
    EXPECT_TRUE(isChecked());

    const QImage round = Look(PANEL_SHAPE);
    TakeCalls();
    m_Face.strBrowseAnswer = "data/brushes/square.png";
    Click(PANEL_SHAPE);
    EXPECT_EQ(TakeCalls(),
              Lines{"Host.BrowseForFile(1, null, .\\data\\brushes\\round.png, data/brushes, Bitmap "
                    "files (*.dds;*.jpg;*.png)|*.dds|*.jpg|*.png)"});
    EXPECT_STREQ(Brush()->GetBitmapPath(), "data/brushes/square.png");
    EXPECT_NE(Look(PANEL_SHAPE), round);
    EXPECT_TRUE(Brush()->IsBitmapChanged());
    m_Face.strBrowseAnswer = ".\\data\\brushes\\round.png";
    QTest::keyClick(Find(PANEL_SHAPE), Qt::Key_Space); // by the keyboard
    Find(PANEL_SHAPE)->clearFocus();
    EXPECT_EQ(Look(PANEL_SHAPE), round);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CBrushControls, TheKeyboardReachesEveryControlInOrder)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_POINT_HEIGHT); // without fields the grid is one stop
    Find(PANEL_SHAPE)->setFocus();
    std::vector<std::string> way;
    for (int i = 0; i < 40 && QApplication::focusWidget() != nullptr; ++i)
    {
        way.push_back(QApplication::focusWidget()->objectName().toStdString());
        if (way.back() == std::to_string(PANEL_MATERIAL_BROWSE))
        {
            break;
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    std::vector<std::string> expected = {"2106",
                                         "2115",
                                         "2128",
                                         "2198",
                                         "2199",
                                         "2200",
                                         "2201",
                                         "2136",
                                         "2121",
                                         "2203",
                                         "2204",
                                         "2195",
                                         "2196",
                                         "2194",
                                         "2192",
                                         "2193",
                                         "2119",
                                         "Tool"}; // titles fold their groups
    for (const SFunctionFace* pFace : GetFunctionPlaces())
    {
        expected.push_back(std::to_string(pFace->uButton));
    }
    for (const char* pszId : {"2123",
                              "Defined brushes",
                              "2113",
                              "2120",
                              "Height map",
                              "2138",
                              "2127",
                              "Terrain normals",
                              "2139",
                              "2129",
                              "Terrain material",
                              "2205",
                              "2206"})
    {
        expected.emplace_back(pszId);
    }
    EXPECT_EQ(way, expected);
}
