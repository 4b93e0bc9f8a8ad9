// The painting mode: what it asks of the host and the layer, and what it does to the bitmap.

#include "tellur/painting/CTellur2DFunctionSet.h"
#include "tests/tellur/painting/PaintingFixture.h"

namespace
{

constexpr float RED[] = {1.0F, 0.0F, 0.0F, 1.0F};

class CPaintingMode : public CPaintingFixture
{
protected:
    std::unique_ptr<IImage> Saved(const char* pszName)
    {
        return std::unique_ptr<IImage>(IL_LoadImage(m_Folder.Path(pszName).c_str()));
    }
};

} // namespace

TEST_F(CPaintingMode, SwitchingOnLoadsTheFileOnce)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Click(DRAW_EDIT);
    EXPECT_EQ(TakeCalls(),
              (Lines{"Host.SetModeCaption(Edit terrain type)", "Host.RefreshView(1)"}));
    EXPECT_EQ(m_Layer.GetChannelMask(), 0x1FFU);
    EXPECT_EQ(At(3, 3), (Texel{10, 20, 30, 255}));
    EXPECT_STREQ(Mode().GetName(), "ModeTerraforming");
    EXPECT_TRUE(Mode().IsAvailable() && Mode().CanDeactivate());

    Stroke({{40, 0, 40}});
    EXPECT_EQ(At(3, 3), (Texel{255, 0, 0, 255}));
    EXPECT_EQ(At(2, 3), (Texel{10, 20, 30, 255}));
    Click(DRAW_EDIT);
    EXPECT_EQ(m_Layer.GetImage(), nullptr);
    WriteBitmap("types.png", 1, 1, 1);
    Click(DRAW_EDIT);
    EXPECT_EQ(At(3, 3), (Texel{255, 0, 0, 255})) << "the same name keeps what was painted";
    EXPECT_EQ(At(0, 0), (Texel{10, 20, 30, 255}));
    Click(DRAW_EDIT);

    WriteBitmap("other.png", 7, 8, 9);
    Type(DRAW_BITMAP_FILE, "other.png");
    Mode().SetChannelMask(0x600);
    Click(DRAW_EDIT);
    EXPECT_EQ(At(3, 3), (Texel{7, 8, 9, 255}));
    EXPECT_EQ(Mode().GetChannelMask(), 0x7FFU) << "alpha's bits are kept";
    Click(DRAW_UNDO);
    EXPECT_EQ(At(3, 3), (Texel{7, 8, 9, 255})) << "strokes of the file before are forgotten";
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPaintingMode, AStrokePaintsWhereItHitsUntilItIsReleasedSuspendedOrLeft)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Edit();
    const auto move = [this](float fX)
    {
        m_Face.Hit(fX, 5, 30);
        m_Plugin->OnMouseMove(1, 0, 0, 0, 0, 0, 0, 0);
        EXPECT_EQ(ToText(m_Layer.GetBrushBox().value()),
                  ToText({{fX - 10, 0, 20}, {fX + 10, 0, 40}}));
    };
    const auto press = [this](float fX)
    {
        m_Face.Hit(fX, 5, 30);
        m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    };
    const Texel before = {10, 20, 30, 255};
    const Texel red = {255, 0, 0, 255};
    move(10);
    EXPECT_EQ(At(0, 2), before) << "hovering shows the brush alone";
    press(10);
    EXPECT_EQ(At(1, 3), red);
    EXPECT_EQ(At(2, 3), before);
    move(30);
    EXPECT_EQ(At(3, 2), red);
    m_Face.Miss();
    m_Plugin->OnMouseMove(1, 1, 0, 0, 0, 1, 0, 0);
    EXPECT_EQ(m_Layer.GetBrushBox()->min.x, 20.0F) << "as it was";
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    move(50);
    press(10);
    TakeCalls();
    Mode().Suspend(true);
    move(50);
    Mode().Suspend(false);
    EXPECT_EQ(TakeCalls(),
              (Lines{"Host.PickTerrain(1, 0)",
                     "Host.SetModeCaption(Edit terrain type)",
                     "Host.RefreshView(1)"}));
    press(10);
    Edit();
    Edit();
    move(50);
    EXPECT_EQ(At(4, 2), before);
}

TEST_F(CPaintingMode, AStrokeThatIsNotReleasedIsKeptAndSaved)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    EXPECT_TRUE(Dialog().ChooseBrushShape("white.png"));
    EXPECT_EQ(m_Layer.GetBrushTexture(), nullptr) << "not while the mode is not current";
    Edit();
    m_Face.Hit(40, 0, 40);
    m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    Click(DRAW_SAVE);
    const auto pSaved = Saved("types.png");
    ASSERT_NE(pSaved, nullptr);
    EXPECT_EQ(pSaved->GetRawData()[27 * 3], 255);
    EXPECT_EQ(m_Plugin->GetUnsavedBitmap(), "");
    m_Face.Hit(10, 0, 10);
    m_Plugin->OnMouseMove(1, 1, 0, 0, 0, 1, 0, 0);
    EXPECT_EQ(m_Plugin->GetUnsavedBitmap(), "types.png");
    Edit();
    Edit();
    EXPECT_EQ(At(0, 0), (Texel{255, 0, 0, 255}));
    EXPECT_EQ(At(3, 3), (Texel{255, 0, 0, 255}));
    EXPECT_EQ(m_Plugin->GetUnsavedBitmap(), "types.png");
    EXPECT_TRUE(Mode().SaveBitmap("copy.png")); // as a recording makes them
    EXPECT_EQ(m_Plugin->GetUnsavedBitmap(), "types.png");
    EXPECT_FALSE(Mode().SaveBitmap("nowhere/types.png"));
    EXPECT_EQ(m_Plugin->GetUnsavedBitmap(), "types.png");
    Click(DRAW_SAVE);
    EXPECT_EQ(m_Plugin->GetUnsavedBitmap(), "");
}

TEST_F(CPaintingMode, UndoDepthIsTheSettings)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    const auto read = [this](const char* pszNumber)
    {
        const std::string strText = std::string("!Tellur2DDrawUndoMgrStackSize( i )\n") +
                                    "Tellur2DDrawUndoMgrStackSize( " + pszNumber + " )\n";
        m_Plugin->LoadSettings(Parse(strText).get());
    };
    read("2");
    Edit();
    for (const float fX : {5.0F, 15.0F, 25.0F})
    {
        Type(DRAW_EXTENT_EDIT, "5");
        Stroke({{fX, 0, 5}});
    }
    const Texel before = {10, 20, 30, 255};
    const Texel red = {255, 0, 0, 255};
    Click(DRAW_UNDO);
    Click(DRAW_UNDO);
    Click(DRAW_UNDO);
    EXPECT_EQ(At(0, 0), red) << "the oldest of three is not kept";
    EXPECT_EQ(At(1, 0), before);
    EXPECT_EQ(At(2, 0), before);
    Click(DRAW_REDO);
    EXPECT_EQ(At(1, 0), red);
    EXPECT_EQ(At(2, 0), before);
    read("-3"); // counts as one
    Click(DRAW_UNDO);
    EXPECT_EQ(At(1, 0), red) << "of the two only the last is left";
    EXPECT_EQ(At(2, 0), before);
    Click(DRAW_REDO);
    EXPECT_EQ(At(2, 0), red);

    // Changed in the host's list of settings it counts when the next stroke is kept.
    auto* pDepth = static_cast<int32_t*>(m_Host.GetSettings().GetRegistered()[0].pValue);
    *pDepth = 10;
    Stroke({{35, 0, 5}});
    Stroke({{45, 0, 5}});
    Click(DRAW_UNDO);
    Click(DRAW_UNDO);
    EXPECT_EQ(At(4, 0), before);
    EXPECT_EQ(At(3, 0), before);
    Click(DRAW_REDO);
    Click(DRAW_REDO);
    EXPECT_EQ(At(4, 0), red);
    Edit();
    EXPECT_EQ(m_Layer.GetImage(), nullptr);
    Click(DRAW_UNDO);
    EXPECT_EQ(At(4, 0), before) << "shown where nobody paints";

    // It is not taken for the next file's, which might be written over with it.
    WriteBytes(m_Folder.Path("broken.png"), "no picture");
    Type(DRAW_BITMAP_FILE, "broken.png");
    Edit();
    EXPECT_EQ(m_Layer.GetImage(), nullptr);
    Stroke({{5, 0, 5}});
    Click(DRAW_SAVE);
    EXPECT_EQ(ReadBytes(m_Folder.Path("broken.png")), "no picture");
    m_Log.Clear();
}

TEST_F(CPaintingMode, APaletteIsTurnedRoundOnTheWayInAndOut)
{
    const std::vector<uint8_t> colors = {200, 100, 0, 0, 100, 200, 9, 9, 9, 0, 100, 200};
    for (const char* pszName : {"palette.png", "palette.tga", "palette.bmp"})
    {
        SCOPED_TRACE(pszName);
        ASSERT_NO_FATAL_FAILURE(WritePaletted(pszName, colors, 0));
        ASSERT_NO_FATAL_FAILURE(OpenDialog(pszName));
        Edit();
        EXPECT_EQ(Mode().GetChannelMask(), 0x1FEU);
        EXPECT_EQ(At(0, 0), (Texel{0, 100, 200, 255}));
        EXPECT_FALSE(IsOn(DRAW_MUL));
        Mode().SetPower(0.5F);
        Stroke({{40, 0, 40}});
        EXPECT_EQ(At(3, 3), (Texel{0, 100, 200, 255})) << "a half is too weak";
        Mode().SetPower(1.0F);
        Stroke({{40, 0, 40}});
        EXPECT_EQ(At(3, 3), (Texel{200, 100, 0, 255})) << "the first entry as it is";
        Stroke({{10, 0, 10}});
        Click(DRAW_UNDO);
        Click(DRAW_SAVE);
        const auto pSaved = Saved(pszName);
        ASSERT_NE(pSaved, nullptr);
        EXPECT_EQ(pSaved->GetFormat(), EImageFormat::Indexed8);
        EXPECT_EQ(pSaved->GetRawData()[27], 1) << "the first entry with these bytes";
        EXPECT_EQ(pSaved->GetRawData()[0], 0);
        const std::unique_ptr<IPalette> pPalette(IL_LoadPalette(m_Folder.Path(pszName).c_str()));
        ASSERT_NE(pPalette, nullptr);
        ASSERT_GE(pPalette->GetCount(), 4U);
        for (uint32_t i = 0; i < 4; ++i)
        {
            EXPECT_TRUE(std::equal(&colors[i * 3], &colors[i * 3] + 3, pPalette->GetEntry(i)));
        }
        Edit();
    }
    // Neighbours that differ in one byte alone are told apart.
    ASSERT_NO_FATAL_FAILURE(WritePaletted("near.png", {200, 100, 0, 10, 100, 0, 200, 100, 90}, 0));
    ASSERT_NO_FATAL_FAILURE(OpenDialog("near.png"));
    Edit();
    Type(DRAW_EXTENT_EDIT, "5");
    Dialog().ChooseColor(std::array<float, 4>{0.0F, 100.5F / 255.0F, 10.5F / 255.0F, 1}.data());
    Stroke({{35, 0, 35}});
    Click(DRAW_SAVE);
    const auto pSaved = Saved("near.png");
    ASSERT_NE(pSaved, nullptr);
    EXPECT_EQ(pSaved->GetRawData()[26], 0);
    EXPECT_EQ(pSaved->GetRawData()[27], 1);
    EXPECT_EQ(pSaved->GetRawData()[28], 0);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPaintingMode, SavingKeepsTheFormatAndAFailureTheOldFile)
{
    for (const char* pszName : {"free.png", "free.tga", "free.bmp", "free.dds", "free.jpg"})
    {
        SCOPED_TRACE(pszName);
        WriteBitmap(pszName, 10, 20, 30);
        const std::string strHead = ReadBytes(m_Folder.Path(pszName)).substr(0, 2);
        ASSERT_NO_FATAL_FAILURE(OpenDialog(pszName));
        Edit();
        Mode().SetColor(RED);
        const bool bExact = std::string(pszName) != "free.jpg";
        Type(DRAW_EXTENT_EDIT, bExact ? "10" : "100"); // a small patch would run into its ground
        Stroke({{40, 0, 40}});
        Click(DRAW_SAVE);
        const auto pSaved = Saved(pszName);
        ASSERT_NE(pSaved, nullptr);
        EXPECT_EQ(pSaved->GetFormat(), EImageFormat::Rgb24);
        EXPECT_EQ(ReadBytes(m_Folder.Path(pszName)).substr(0, 2), strHead);
        const uint8_t* pTexel = pSaved->GetRawData() + 27 * 3;
        EXPECT_NEAR(pTexel[0], 255, bExact ? 0 : 4);
        EXPECT_NEAR(pTexel[1], 0, bExact ? 0 : 4);
        EXPECT_NEAR(pSaved->GetRawData()[0], bExact ? 10 : 255, bExact ? 0 : 4);
        Edit();
    }
    EXPECT_EQ(m_Log.GetText(), "");

    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Edit();
    Stroke({{40, 0, 40}});
    const std::string strBefore = ReadBytes(m_Folder.Path("types.png"));
    EXPECT_FALSE(Mode().SaveBitmap("nowhere/types.png"));
    EXPECT_FALSE(Mode().SaveBitmap("types.gif"));
    EXPECT_EQ(m_Log.TakeLines().size(), 2U);
    EXPECT_FALSE(Mode().SaveBitmap(""));
    EXPECT_FALSE(Mode().SaveBitmap(nullptr));
    EXPECT_EQ(m_Log.GetText(), "");
    EXPECT_EQ(ReadBytes(m_Folder.Path("types.png")), strBefore);
    Click(DRAW_UNDO); // saving does not forget the strokes
    EXPECT_EQ(At(3, 3), (Texel{10, 20, 30, 255}));
}

TEST_F(CPaintingMode, LeavingReloadsWhatShowsTheFileByItsPathOrByItsName)
{
    CTextureManager& textures = m_Host.GetEngine().GetTextures();
    std::filesystem::create_directory(m_Folder.Path("art"));
    WriteBitmap("art/types.png", 1, 2, 3);
    ASSERT_NO_FATAL_FAILURE(OpenDialog("Art/Types.png"));
    for (const char* pszLoaded : {"types.png", "art/types.png"})
    {
        auto* pTexture = static_cast<CTexture*>(textures.Load(pszLoaded, 1));
        ASSERT_NE(pTexture, nullptr);
        const uint32_t uRevision = pTexture->GetRevision();
        Edit();
        Edit();
        EXPECT_NE(pTexture->GetRevision(), uRevision) << pszLoaded;
        textures.Release(pTexture);
    }
}

TEST_F(CPaintingMode, WhatIsMissingIsLeftOut)
{
    WriteBytes(m_Folder.Path("broken.png"), "no picture");
    ASSERT_NO_FATAL_FAILURE(OpenDialog("broken.png"));
    Click(DRAW_EDIT);
    EXPECT_EQ(m_Log.TakeLines(),
              Lines{"[IL_LoadImage] broken.png: not a PNG, JPEG, TGA, BMP or DDS file"});
    EXPECT_FALSE(Mode().HasBitmap());
    EXPECT_EQ(m_Layer.GetImage(), nullptr);
    Stroke({{40, 0, 40}, {50, 0, 40}});
    Click(DRAW_UNDO);
    Click(DRAW_SAVE);
    EXPECT_EQ(ReadBytes(m_Folder.Path("broken.png")), "no picture");
    Click(DRAW_EDIT);

    m_Host.bHasPaintLayer = false; // a host without one
    Type(DRAW_BITMAP_FILE, "types.png");
    Click(DRAW_EDIT);
    EXPECT_TRUE(IsChecked(DRAW_EDIT));
    EXPECT_FALSE(Mode().HasBitmap());
    EXPECT_EQ(Mode().GetPaintMaterial(), nullptr);
    EXPECT_EQ(Mode().GetTexelMapping(), ETexelMapping::Centers);
    Stroke({{40, 0, 40}, {50, 0, 40}});
    Click(DRAW_EDIT);

    std::unique_ptr<CTellur2DFunction> pNone;
    EXPECT_FALSE(Mode().AddFunction(pNone));
    std::unique_ptr<CTellur2DFunction> pSecondSet = std::make_unique<CTellur2DFunctionSet>();
    EXPECT_FALSE(Mode().AddFunction(pSecondSet));
    EXPECT_NE(pSecondSet, nullptr) << "still the caller's";
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPaintingMode, AHostileFileOfAnyFormatIsOneLineAndNoBitmap)
{
    OpenDialog();
    for (const char* pszName :
         {"hostile.png", "hostile.tga", "hostile.bmp", "hostile.dds", "hostile.jpg"})
    {
        WriteBitmap(pszName, 10, 20, 30);
        const std::string strPath = m_Folder.Path(pszName);
        const std::string strWhole = ReadBytes(strPath);
        const std::string strKind = pszName + std::strlen("hostile.");
        std::string strGiant = strWhole; // 32767 texels high, or more, as far as the header says
        const size_t nHeight = strKind == "png"   ? 22
                               : strKind == "tga" ? 14
                               : strKind == "bmp" ? 22
                               : strKind == "dds" ? 12
                                                  : strWhole.find("\xff\xc0") + 5;
        strGiant[nHeight] = '\xff';
        strGiant[nHeight + 1] = '\x7f';
        for (const std::string& strBytes : {strWhole.substr(0, strWhole.size() / 2), strGiant})
        {
            SCOPED_TRACE(pszName + std::to_string(strBytes.size()));
            WriteBytes(strPath, strBytes);
            Type(DRAW_BITMAP_FILE, pszName);
            Click(DRAW_EDIT);
            const Lines lines = m_Log.TakeLines();
            ASSERT_EQ(lines.size(), 1U);
            EXPECT_NE(lines[0].find(pszName), std::string::npos) << lines[0];
            EXPECT_FALSE(Mode().HasBitmap());
            EXPECT_EQ(m_Layer.GetImage(), nullptr);
            Click(DRAW_EDIT);
            Type(DRAW_BITMAP_FILE, "types.png"); // or the name would be the same the next time
            Click(DRAW_EDIT);
            EXPECT_TRUE(Mode().HasBitmap());
            Click(DRAW_EDIT);
        }
    }
    EXPECT_EQ(m_Log.GetText(), "");
}
