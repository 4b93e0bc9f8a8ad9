// The shared library that ships: what it exports, and that it can be loaded, driven and unloaded
// again and again.

#include "framework/core/ResourceModule.h"
#include "host/Reflection.h"
#include "tests/tellur/plugin/PluginLibraryFixture.h"

#include <cstdlib>

TEST_F(CPluginLibrary, ExportsInitializeMeAlone)
{
    const std::string strCommand =
        "test \"$(nm -D --defined-only '" + LIBRARY + "' | cut -d ' ' -f 2-)\" = 'T InitializeMe'";
    EXPECT_EQ(std::system(strCommand.c_str()), 0);
}

TEST_F(CPluginLibrary, RunsADragAndIsUnmappedTwiceInOneProcess)
{
    EXPECT_FALSE(IsMapped());
    for (int iRound = 0; iRound < 2; ++iRound)
    {
        SCOPED_TRACE(iRound);
        ASSERT_NO_FATAL_FAILURE(Open());
        EXPECT_TRUE(IsMapped());
        EXPECT_NE(CRTTI::FindClass("CRelativeHeightFunction"), nullptr);
        std::string strText;
        EXPECT_TRUE(LoadStringResource(2102, strText)) << "registered for all lookups";
        EXPECT_EQ(strText, "Terrain");

        ASSERT_NO_FATAL_FAILURE(PlayScript());
        PressAndMove();
        m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
        EXPECT_EQ(m_Host.At(4, 4), 50.0F);
        ASSERT_TRUE(m_Host.Undo());
        EXPECT_EQ(m_Host.At(4, 4), 0.0F);

        ASSERT_NO_FATAL_FAILURE(Close());
        EXPECT_EQ(CRTTI::FindClass("CRelativeHeightFunction"), nullptr) << "gone with the library";
        EXPECT_FALSE(LoadStringResource(2102, strText));
        EXPECT_EQ(GetCurrentResourceModule(), nullptr);
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPluginLibrary, MayBeClosedInTheMiddleOfADrag)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    ASSERT_NO_FATAL_FAILURE(PlayScript());
    PressAndMove();
    ASSERT_NO_FATAL_FAILURE(Close());
    EXPECT_EQ(m_Host.At(4, 4), 50.0F);
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 0U);
}
