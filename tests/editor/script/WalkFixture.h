#pragma once

#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "editor/core/CPluginLoader.h"
#include "editor/script/CScriptCursor.h"
#include "editor/script/CScriptKeywords.h"
#include "editor/script/CScriptPlayer.h"
#include "engine/world/CEngineHost.h"
#include "framework/core/COffscreenWindows.h"
#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "host/IPluginPainting.h"
#include "host/IPluginScript.h"
#include "host/Terrain.h"
#include "parser/TCParseFile.h"
#include "tests/support/CNumbers.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/FakeFrontEnd.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

constexpr float WIDTH = 333.0F; // no power of two: extents and positions need all their digits

// The person is a row of numbers.
class CRandomFace : public CHeadlessFace, public CFakeFrontEnd
{
public:
    CRandomFace() { pCalls = nullptr; } // memory is counted here

    IFrontEnd* GetFrontEnd() override { return this; }

    bool PickTerrain(ViewId, ViewPoint, SVec3& hit) override { return cursor.Pick(pWorld, hit); }

    bool PrepareWindows() override { return windows.Open(); }

    bool IsKeyDown(EKey eKey) const override { return cursor.IsKeyDown(eKey); }

    COffscreenWindows windows; // opened when something is painted
    CScriptCursor cursor;
    World* pWorld = nullptr;
};

// The real plug-in on a host that nobody watches, worked by a row of numbers.
class CWalkFixture : public testing::Test
{
protected:
    CWalkFixture()
    {
        ::setenv("XDG_STATE_HOME", m_Folder.Path("state").c_str(), 1);
        fs::set_user_root(m_Folder.GetFolder().c_str());
        fs::set_data_root(TELLUR_SOURCE_DIR);
        m_Face.pWorld = m_Host.GetEngine().GetWorld();
    }

    ~CWalkFixture() override
    {
        m_Loader.Unload();
        fs::set_user_root(nullptr);
        fs::set_data_root(nullptr);
    }

    void Start()
    {
        ASSERT_TRUE(m_Loader.Load(TELLUR_BIN_DIR "/libtellur.so"));
        m_Script = dynamic_cast<IPluginScript*>(m_Loader.GetPlugin());
        m_Painting = dynamic_cast<IPluginPainting*>(m_Loader.GetPlugin());
        ASSERT_TRUE(m_Host.NewLevel(48, {WIDTH, 200.0F, WIDTH}));
        TakeBrush(0, 0.1F);
        Drag();
    }

    void Play(const std::string& strText)
    {
        WriteBytes(m_Folder.Path("state.txt"),
                   "!brush()\n!mode( s )\n" + GetBrushDeclarations(EBrushBlock::Script) + strText);
        const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile("state.txt"));
        ASSERT_NE(pFirst, nullptr);
        std::string strWhy;
        for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
        {
            ASSERT_EQ(m_Script->Play(pKey, strWhy), EScriptResult::Done) << strWhy;
        }
    }

    void PlayScript(const std::string& strText)
    {
        WriteBytes(m_Folder.Path("script.tellur"),
                   CScriptKeywords(m_Loader.GetPlugin()).GetDeclarations() + strText);
        const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile("script.tellur"));
        CScriptPlayer player(
            m_Host, m_Face.cursor, 1, m_Loader.GetPlugin(), m_Folder.Path("script.tellur"));
        std::string strFault;
        EXPECT_TRUE(player.Play(pFirst.get(), strFault)) << strFault;
    }

    void TakeBrush(int iFunction, float fShare)
    {
        constexpr const char* FUNCTIONS[] = {
            "function( \"RelativeHeightFunction\" ) { attrib( \"m_Height\", \"7.3\" ) }",
            "function( \"SetHeightFunction\" ) { attrib( \"m_Height\", \"31.7\" ) }",
            "function( \"BlurFunction\" ) { attrib( \"m_NeighbourhoodSize\", \"2\" ) }",
            "function( \"PosterizeFunction\" )",
            "function( \"PointHeightFunction\" )",
            "function( \"RampFunction\" )",
        };
        char szNumbers[160];
        std::snprintf(szNumbers,
                      sizeof(szNumbers),
                      "extent( %.6f )\npower_modifier( %.6f )\nfade_factor( %.6f )\n"
                      "hardness( %.6f )\n",
                      static_cast<double>(WIDTH * fShare),
                      0.37 + 0.5 * static_cast<double>(fShare),
                      iFunction % 2 == 0 ? 0.013 : 0.0,
                      0.11 * static_cast<double>(fShare));
        Play(std::string("brush()\n{\n bitmap() { path( \"data/brushes/cone.png\" ) }\n") +
             FUNCTIONS[iFunction] + "\n" + szNumbers + "}\nmode( \"terraforming\" )\n");
    }

    void Point()
    {
        if (m_Numbers.Int(0, 7) == 0)
        {
            m_Face.cursor.PointAtNothing();
            return;
        }
        m_Face.cursor.PointAtPosition(m_Numbers.Float(0.0F, WIDTH), m_Numbers.Float(0.0F, WIDTH));
    }

    void Drag()
    {
        m_Face.cursor.SetKeys(m_Numbers.Int(0, 3) == 0, m_Numbers.Int(0, 3) == 0);
        Point();
        m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
        const int nMoves = m_Numbers.Int(0, 6);
        for (int i = 0; i < nMoves; ++i)
        {
            Point();
            if (m_Numbers.Int(0, 3) == 0)
            {
                const auto element = [this]
                {
                    return m_Numbers.Float(-1.0F, 1.0F);
                };
                m_Host.GetInput().SetPointForm(
                    {m_Numbers.Float(0.0F, 1.0F), element(), element(), element(), element()});
            }
            m_Host.GetInput().SendMouseMove(1, MOUSE_LEFT, {}, {0, 1}, {0, m_Numbers.Int(-9, 9)});
            if (m_Numbers.Int(0, 9) == 0)
            {
                m_Host.GetInput().SendAction(1, m_Numbers.Int(1, 2), 1); // the brush grows
            }
        }
        if (m_Numbers.Int(0, 9) != 0) // else the next press drops it
        {
            m_Host.GetInput().SendButtonUp(1, 0, {});
        }
    }

    void ReplaceTerrain()
    {
        SHeightField field;
        ASSERT_TRUE(field.Allocate(static_cast<uint32_t>(m_Numbers.Int(9, 40)), 33));
        field.size = {WIDTH, 90.0F, WIDTH};
        for (size_t i = 0; i < field.GetCount(); ++i)
        {
            field.pHeights[i] = m_Numbers.Float(0.0F, 60.0F);
        }
        m_Host.GetLevelHeights().Replace(std::move(field), "Import");
    }

    // In any way; some are refused.
    void Reshape()
    {
        SGroundAct act = {.eKind = static_cast<EGround>(m_Numbers.Int(0, 6))};
        act.size = {WIDTH, m_Numbers.Float(80.0F, 200.0F), m_Numbers.Float(200.0F, WIDTH)};
        act.bScale = act.bAtZero = act.bWrap = m_Numbers.Int(0, 1) == 0;
        for (int32_t* pCells :
             {&act.iWest, &act.iNorth, &act.iEast, &act.iSouth, &act.iCellsX, &act.iCellsZ})
        {
            *pCells = m_Numbers.Int(-4, 4);
        }
        act.iTurns = m_Numbers.Int(1, 3);
        act.fBy = m_Numbers.Float(-20.0F, 20.0F);
        m_Host.GetGround().Do(act);
    }

    void Protect()
    {
        constexpr EProtect KINDS[] = {
            EProtect::Invert, EProtect::Clear, EProtect::Grow, EProtect::Slope, EProtect::Heights};
        CHostProtection& protection = m_Host.GetProtection();
        const int nDiscs = m_Numbers.Int(0, 3);
        if (nDiscs == 0)
        {
            const float fFirst = m_Numbers.Float(2.0F, 60.0F);
            protection.Do({KINDS[m_Numbers.Int(0, 4)], fFirst, fFirst + 20.0F});
        }
        protection.Begin(); // often with nothing in it
        for (int i = 0; i < nDiscs; ++i)
        {
            protection.Do({EProtect::Disc,
                           m_Numbers.Float(0.0F, WIDTH),
                           m_Numbers.Float(0.0F, WIDTH),
                           m_Numbers.Float(10.0F, 90.0F),
                           m_Numbers.Int(0, 3) != 0});
        }
        protection.End();
    }

    // Some drags that are one step, which may end in any way.
    void DoGroup()
    {
        m_Host.GetInput().EndDrag();
        m_Host.GetHistory().BeginStep(1);
        const int nDrags = m_Numbers.Int(0, 4);
        for (int i = 0; i < nDrags; ++i)
        {
            m_Numbers.Int(0, 2) == 0 ? TakeBrush(m_Numbers.Int(0, 5), 0.2F) : Drag();
            m_Host.GetInput().EndDrag();
        }
        switch (m_Numbers.Int(0, 6))
        {
        case 0:
            m_Host.Undo(); // ends it first
            break;
        case 1:
            ReplaceTerrain();
            break;
        case 2:
            m_Host.GetInput().SendButtonDown(2, MOUSE_LEFT, {});
            m_Host.GetInput().EndDrag();
            break;
        case 3:
            break; // stays open
        default:
            m_Host.GetHistory().EndStep();
        }
    }

    void DoSomething()
    {
        CUndoStack& stack = m_Host.GetUndoStack();
        switch (m_Numbers.Int(0, 15))
        {
        case 8:
        case 9:
            Protect();
            break;
        case 0:
            TakeBrush(m_Numbers.Int(0, 5), m_Numbers.Float(0.05F, 0.4F));
            break;
        case 1:
            m_Host.GetInput().EndDrag();
            m_Host.Undo();
            break;
        case 2:
            m_Host.GetInput().EndDrag();
            m_Host.Redo();
            break;
        case 3:
            m_Host.GetInput().EndDrag();
            stack.GoTo(static_cast<size_t>(
                m_Numbers.Int(0, static_cast<int>(stack.GetCount() + stack.GetRedoCount()))));
            break;
        case 4:
            m_Host.GetInput().SendAction(1, m_Numbers.Int(1, 2), 3);
            break;
        case 5:
            m_Host.GetInput().EndDrag();
            m_Host.GetInput().SendAction(1, 0, 1); // leaves the mode, and its brush with it
            Drag();
            TakeBrush(m_Numbers.Int(0, 5), m_Numbers.Float(0.05F, 0.4F));
            break;
        case 6:
            Point();
            m_Host.GetInput().SendMouseMove(1, 0, {}, {0, 0}, {0, 2});
            break;
        case 7:
            ReplaceTerrain();
            break;
        case 10:
            Reshape();
            break;
        case 13:
            DoGroup();
            break;
        default:
            Drag();
        }
    }

    std::string SaveHeights(const char* pszName)
    {
        const std::string strPath = m_Folder.Path(pszName);
        EXPECT_TRUE(m_Face.pWorld->GetTerrain()->SaveHeightMap(strPath.c_str(), nullptr, 0, 0));
        return ReadBytes(strPath);
    }

    CTempFolder m_Folder;
    CRandomFace m_Face;
    CEditorHost m_Host{m_Face};
    CPluginLoader m_Loader{m_Host};
    IPluginScript* m_Script = nullptr;
    IPluginPainting* m_Painting = nullptr;
    CNumbers m_Numbers{1};
};
