// The ground of a level changed as a whole: every vertex where paper says, the way back bit for
// bit, the same out of a recording and after a kill, and the bitmap over it all the time.

#include "editor/core/CBitmapFollower.h"
#include "editor/script/CRecorder.h"
#include "tests/editor/script/AutosaveFixture.h"
#include "tests/editor/script/SGroundModel.h"

namespace
{

constexpr int GROUND_COLUMNS = 66; // 65 x 33 cells: two squares of the protection, and not square
constexpr int GROUND_ROWS = 34;

struct SCase
{
    const char* pszCall;
    std::function<void(SGroundModel& model)> carry;
};

const SCase CASES[] = {
    {"level_turn( 1 )",
     [](SGroundModel& model)
     {
         model.Turn();
     }},
    {"level_extend( 3, -4, 7, 60, 0 )",
     [](SGroundModel& model)
     {
         model.Carry([](int x, int z) { return std::pair(x + 3, z - 4); });
         std::erase_if(model.vertices, [](const auto& at) { return at.first.second < 0; });
         model.Frame(model.iColumns + 10, model.iRows + 56, false);
     }},
    {"level_mirror( \"x\" )",
     [](SGroundModel& model)
     {
         model.Carry([&](int x, int z) { return std::pair(model.iColumns - 1 - x, z); });
     }},
    {"level_raise( 31.5 )",
     [](SGroundModel& model)
     {
         model.Adjust(1.0, 31.5);
     }},
    {"level_shift( 5, -70, 1 )",
     [](SGroundModel& model)
     {
         model.Carry(
             [&](int x, int z)
             { return std::pair((x + 5) % model.iColumns, (z - 70 + model.iRows) % model.iRows); });
     }},
    {"level_turn( 3 )",
     [](SGroundModel& model)
     {
         model.Turn();
         model.Turn();
         model.Turn();
     }},
    {"level_size( [500, 45, 333], 1 )",
     [](SGroundModel& model)
     {
         const double dFactor = 45.0 / double{model.size.y};
         model.size = {500.0F, 45.0F, 333.0F};
         model.Adjust(dFactor, 0.0);
     }},
    {"level_shift( -9, 2, 0 )",
     [](SGroundModel& model)
     {
         const SVec3 size = model.size;
         model.Carry([](int x, int z) { return std::pair(x - 9, z + 2); });
         std::erase_if(model.vertices,
                       [&](const auto& at)
                       { return at.first.first < 0 || at.first.second >= model.iRows; });
         model.Frame(model.iColumns, model.iRows, false);
         model.size = size;
     }},
    {"level_mirror( \"z\" )",
     [](SGroundModel& model)
     {
         model.Carry([&](int x, int z) { return std::pair(x, model.iRows - 1 - z); });
     }},
    {"level_raise( -20 )",
     [](SGroundModel& model)
     {
         model.Adjust(1.0, -20.0);
     }},
    {"level_size( [500, 12, 333], 0 )",
     [](SGroundModel& model)
     {
         model.size.y = 12.0F;
         model.Adjust(1.0, 0.0);
     }},
    {"level_turn( 2 )",
     [](SGroundModel& model)
     {
         model.Turn();
         model.Turn();
     }},
    {"level_extend( 1, 0, -30, 2, 1 )",
     [](SGroundModel& model)
     {
         model.Carry([](int x, int z) { return std::pair(x + 1, z); });
         std::erase_if(model.vertices,
                       [&](const auto& at) { return at.first.first >= model.iColumns - 29; });
         model.Frame(model.iColumns - 29, model.iRows + 2, true);
     }},
};

class CGroundTest : public CAutosaveTest
{
protected:
    CTerrain& GetTerrain() { return *m_Host.GetEngine().GetCWorld().GetCTerrain(); }

    // Rough ground with some that cannot be edited, as the open level.
    void StartRough()
    {
        ASSERT_NO_FATAL_FAILURE(CWalkFixture::Start());
        TakeRough();
    }

    void TakeRough()
    {
        SHeightField field;
        ASSERT_TRUE(field.Allocate(GROUND_COLUMNS, GROUND_ROWS));
        field.size = {650.0F, 90.0F, 330.0F};
        for (size_t i = 0; i < field.GetCount(); ++i)
        {
            field.pHeights[i] = m_Numbers.Float(-3.0F, 80.0F);
        }
        m_Host.TakeLevel(std::move(field));
        m_Host.GetProtection().Do({EProtect::Disc, 620.0F, 40.0F, 90.0F});
        m_Host.GetProtection().Do({EProtect::Disc, 100.0F, 200.0F, 40.0F});
        m_Host.GetUndoStack().Clear();
    }

    SGroundModel GetGround()
    {
        const CTerrain& terrain = GetTerrain();
        SGroundModel ground{static_cast<int>(terrain.GetVerticesX()),
                            static_cast<int>(terrain.GetVerticesZ()),
                            terrain.GetSizeVector(),
                            {}};
        for (int z = 0; z < ground.iRows; ++z)
        {
            for (int x = 0; x < ground.iColumns; ++x)
            {
                ground.vertices[{x, z}] = {terrain.GetHeightData()[z * ground.iColumns + x],
                                           terrain.GetProtection().IsProtected(
                                               static_cast<uint32_t>(x), static_cast<uint32_t>(z))};
            }
        }
        return ground;
    }

    // A picture of two texels a cell, each with its place in its colour.
    std::string MakeBitmap(const char* pszName)
    {
        constexpr uint32_t WIDE = 2 * (GROUND_COLUMNS - 1);
        constexpr uint32_t HIGH = 2 * (GROUND_ROWS - 1);
        std::vector<uint8_t> texels;
        for (uint32_t i = 0; i < WIDE * HIGH; ++i)
        {
            const uint32_t uX = i % WIDE;
            texels.insert(texels.end(),
                          {static_cast<uint8_t>(uX), static_cast<uint8_t>(i / WIDE), 7});
        }
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(WIDE, HIGH, EImageFormat::Rgb24, texels.data()));
        std::string strPath = m_Folder.Path(pszName);
        EXPECT_TRUE(IL_SaveImage(strPath.c_str(), pImage.get(), nullptr));
        return strPath;
    }

    // Size and the colours of the four corners, from the north-west by rows.
    static std::string ReadCorners(const std::string& strPath)
    {
        const std::unique_ptr<IImage> pImage(IL_LoadImage(strPath.c_str()));
        if (pImage == nullptr)
        {
            return "none";
        }
        const uint32_t uWide = pImage->GetWidth();
        const uint32_t uHigh = pImage->GetHeight();
        const size_t nBytes = pImage->GetBitsPerPixel() / 8;
        std::string strText = std::to_string(uWide) + " x " + std::to_string(uHigh);
        for (const size_t nTexel :
             {size_t{0}, size_t{uWide} - 1, size_t{uWide} * (uHigh - 1), size_t{uWide} * uHigh - 1})
        {
            const uint8_t* pTexel = pImage->GetRawData() + nTexel * nBytes;
            strText += ": " + std::to_string(pTexel[0]) + " " + std::to_string(pTexel[1]);
        }
        return strText;
    }
};

} // namespace

TEST_F(CGroundTest, EveryVertexGoesWherePaperSaysAndTheHistoryBringsAllBack)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    std::vector<SGroundModel> states = {GetGround()};
    SGroundModel model = states[0];
    for (const SCase& row : CASES)
    {
        SCOPED_TRACE(row.pszCall);
        PlayScript(row.pszCall);
        row.carry(model);
        ASSERT_TRUE(GetGround() == model);
        states.push_back(model);
        m_Host.Undo();
        ASSERT_TRUE(GetGround() == states[states.size() - 2]);
        m_Host.Redo();
        ASSERT_TRUE(GetGround() == model);
    }
    for (const size_t nState : {size_t{2}, states.size() - 1, size_t{0}})
    {
        m_Host.GoToStep(nState);
        EXPECT_TRUE(GetGround() == states[nState]) << nState;
    }
    // What no terrain can be changes nothing, and says why.
    for (const char* pszCall : {"level_extend( -64, 0, -1, 0, 0 )",
                                "level_extend( 0, 16384, 0, 0, 0 )",
                                "level_turn( 4 )",
                                "level_size( [1, 0, 1], 1 )",
                                "level_mirror( \"y\" )"})
    {
        CScriptPlayer player(m_Host, m_Face.cursor, 1, m_Loader.GetPlugin(), "s.tellur");
        WriteBytes(m_Folder.Path("s.tellur"),
                   CScriptKeywords(m_Loader.GetPlugin()).GetDeclarations() + pszCall);
        const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile("s.tellur"));
        std::string strFault;
        EXPECT_FALSE(player.Play(pFirst.get(), strFault)) << pszCall;
        EXPECT_NE(strFault.find("s.tellur: level_"), std::string::npos) << strFault;
        EXPECT_TRUE(GetGround() == states[0]);
    }
}

// Wherever a vertex goes, it stays where it was on the map.
TEST_F(CGroundTest, ThePlaceOnTheMapGoesWithTheGround)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    SGeoTags tags;
    tags.bKnown = true;
    tags.first = {600.0, 4100.0};
    tags.lastX = {664.0, 4132.0}; // a turned one
    tags.lastZ = {592.0, 4068.0};
    GetTerrain().SetGeoTags(tags);
    const uint32_t uColumns = GetTerrain().GetVerticesX();
    const float fPeak = 97.0F;
    GetTerrain().SetRowHeights(12, 7, &fPeak, 1);
    const auto findPeak = [&]
    {
        const CTerrain& terrain = GetTerrain();
        const size_t nVertices = size_t{terrain.GetVerticesX()} * terrain.GetVerticesZ();
        const float* pFirst = terrain.GetHeightData();
        const auto iPeak = std::max_element(pFirst, pFirst + nVertices) - pFirst;
        SGeoTags at = terrain.GetGeoTags();
        const double dX =
            static_cast<double>(iPeak % terrain.GetVerticesX()) / (terrain.GetVerticesX() - 1);
        const double dZ =
            static_cast<double>(iPeak / terrain.GetVerticesX()) / (terrain.GetVerticesZ() - 1);
        at.Crop(dX, 1.0, dZ, 1.0);
        return at.first;
    };
    const SMapPoint before = findPeak();
    EXPECT_NE(before.dX, tags.first.dX);
    for (const char* pszCall : {"level_turn( 1 )",
                                "level_mirror( \"x\" )",
                                "level_extend( 3, -2, 5, 1, 0 )",
                                "level_turn( 3 )",
                                "level_shift( 4, -3, 0 )",
                                "level_mirror( \"z\" )",
                                "level_raise( 1 )",
                                "level_turn( 2 )"})
    {
        PlayScript(pszCall);
        EXPECT_NEAR(findPeak().dX, before.dX, 1e-6) << pszCall;
        EXPECT_NEAR(findPeak().dY, before.dY, 1e-6) << pszCall;
    }
    PlayScript("level_shift( 1, 0, 1 )");
    EXPECT_FALSE(GetTerrain().GetGeoTags().bKnown) << "what comes in opposite has no place";
    while (m_Host.Undo())
    {
    }
    EXPECT_EQ(GetTerrain().GetVerticesX(), uColumns);
    EXPECT_EQ(GetTerrain().GetGeoTags().lastZ.dX, tags.lastZ.dX);
}

TEST_F(CGroundTest, ARecordingHasTheActsThemselvesAlsoWhenTheyAreTakenBack)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    {
        CRecorder recorder(m_Host, m_Loader.GetPlugin());
        ASSERT_TRUE(recorder.Start(m_Folder.Path("acts.tellur")));
        // The stroke under the hand ends before the ground moves away from it.
        TakeBrush(1, 0.3F);
        m_Face.cursor.PointAtPosition(100.0F, 100.0F);
        m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
        m_Host.GetInput().SendMouseMove(1, MOUSE_LEFT, {}, {0, 1}, {0, 0});
        ASSERT_TRUE(m_Host.GetGround().Do({.eKind = EGround::Turn}));
        EXPECT_FALSE(m_Host.GetInput().IsDragging());
        EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 2U);
        for (const SCase& row : CASES)
        {
            PlayScript(row.pszCall);
            Drag();
            m_Host.GetInput().EndDrag();
            m_Host.Undo();
            m_Host.Undo();
            m_Host.Redo();
        }
        ASSERT_TRUE(recorder.Stop());
    }
    const std::string strAfter = SaveHeights("after.height");
    EXPECT_FALSE(fs::exists(m_Folder.Path("acts.2.height").c_str())) << "no further terrain";
    const std::string strOut = m_Folder.Path("replayed.height");
    ASSERT_EQ(std::system((TELLUR_BIN_DIR "/tellur-replay " + m_Folder.Path("acts.tellur") +
                           " --root " TELLUR_SOURCE_DIR " --out " + strOut)
                              .c_str()),
              0);
    EXPECT_TRUE(ReadBytes(strOut) == strAfter);
}

TEST_F(CGroundTest, AKillKeepsTheActsAndTheBitmapAndTheWayBack)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    const CBitmapFollower follower(m_Host, m_Document);
    const std::string strBitmap = MakeBitmap("types.png");
    m_Document.SetBitmap(strBitmap);
    ASSERT_TRUE(m_Document.SaveAs(m_Level.c_str()));
    const SGroundModel before = GetGround();
    ASSERT_NO_FATAL_FAILURE(Crash(
        [&]
        {
            Raise("100, 100");
            PlayScript("level_turn( 1 )\nlevel_raise( 5 )\n");
            Raise("200, 400");
            PlayScript("level_extend( 0, 0, -3, 0, 0 )\nundo()\n");
            EXPECT_EQ(m_Document.GetBitmap(), "types.1.png");
        }));
    Open();
    const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_FALSE(entries[0].text.IsCopy()) << "steps say it all";
    size_t nSteps = 0;
    ASSERT_TRUE(Recover(entries[0], nSteps));
    EXPECT_EQ(nSteps, 4U);
    EXPECT_TRUE(SaveHeights("back.height") == ReadBytes(m_Folder.Path("crashed.height")));
    EXPECT_EQ(m_Document.GetBitmap(), "types.1.png");
    EXPECT_FALSE(fs::exists(m_Folder.Path("types.3.png").c_str())) << "none is made twice";
    m_Host.GoToStep(0);
    EXPECT_TRUE(GetGround() == before);
    EXPECT_EQ(m_Document.GetBitmap(), strBitmap);
    End();
}

TEST_F(CGroundTest, TheBitmapFollowsInAFileOfItsOwnWithWhatWasPainted)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    const CBitmapFollower follower(m_Host, m_Document);
    const std::string strBitmap = MakeBitmap("types.png");
    const std::string strBytes = ReadBytes(strBitmap);
    m_Document.SetBitmap(strBitmap);
    ASSERT_TRUE(m_Document.SaveAs(m_Level.c_str()));
    const std::pair<const char*, const char*> steps[] = {
        {"level_turn( 1 )", "66 x 130: 0 65: 0 0: 129 65: 129 0"},
        {"level_mirror( \"z\" )", "66 x 130: 129 65: 129 0: 0 65: 0 0"},
        {"level_shift( 1, 0, 1 )", "66 x 130: 129 1: 129 2: 0 1: 0 2"},
        {"level_extend( -3, 0, 2, 5, 1 )", "64 x 140: 129 61: 129 2: 0 61: 0 2"},
    };
    for (const auto& [pszCall, pszCorners] : steps)
    {
        PlayScript(pszCall);
        EXPECT_EQ(ReadCorners(m_Document.GetBitmap()), pszCorners) << pszCall;
    }
    EXPECT_EQ(m_Document.GetBitmap(), "types.4.png");
    PlayScript("level_raise( 3 )\n");
    EXPECT_EQ(m_Document.GetBitmap(), "types.4.png");
    m_Host.GoToStep(0);
    EXPECT_EQ(m_Document.GetBitmap(), strBitmap);
    EXPECT_FALSE(m_Document.IsModified());
    EXPECT_TRUE(ReadBytes(strBitmap) == strBytes);

    // With what is painted and not saved, which stays unsaved where it was painted.
    PlayScript("paint_bitmap( \"" + strBitmap +
               "\" )\npaint_brush( \"data/brushes/square.png\", 20 )\n"
               "mode( \"edit_terrain_type\" )\npaint_color( [1, 1, 1, 1] )\npress( 649, 1 )\n"
               "move( 649, 1, 0 )\nrelease( 649, 1 )\n");
    EXPECT_EQ(m_Painting->GetUnsavedBitmap(), strBitmap);
    PlayScript("level_turn( 3 )\n");
    EXPECT_EQ(ReadCorners(m_Document.GetBitmap()), "66 x 130: 255 255: 129 65: 0 0: 0 65");
    EXPECT_FALSE(dynamic_cast<IPluginTools*>(m_Loader.GetPlugin())->IsPainting());
    EXPECT_EQ(m_Painting->GetUnsavedBitmap(), strBitmap);
    EXPECT_TRUE(ReadBytes(strBitmap) == strBytes);
}
