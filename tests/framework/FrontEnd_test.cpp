#include "framework/core/Capture.h"
#include "framework/core/Cursor.h"
#include "framework/core/CursorPos.h"
#include "framework/core/KeyState.h"
#include "framework/core/MessageBox.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/FakeFrontEnd.h"

#include <gtest/gtest.h>

TEST(FrontEnd, EverythingReachesTheOneInPlace)
{
    const CFakeFrontEnd first;
    CFakeFrontEnd second;
    const SCursorResource cursor = {2106, {}, 0, 0};
    second.keys = {EKey::Alt};
    second.eAnswer = EMessageBoxAnswer::No;
    EXPECT_TRUE(IsKeyDown(EKey::Alt));
    EXPECT_FALSE(IsKeyDown(EKey::Control));
    SetCursorPos({5, 6});
    EXPECT_EQ(second.cursorPos.x, 5);
    EXPECT_EQ(GetCursorPos().y, 6);
    SetCursor(&cursor);
    EXPECT_EQ(GetCursor(), &cursor);
    EXPECT_EQ(second.pCursor, &cursor);
    SetCursor(nullptr);
    EXPECT_EQ(second.pCursor, nullptr);
    SetCapture(0);
    SetCapture(77);
    ReleaseCapture();
    EXPECT_EQ(ShowMessageBox("Sure?", MB_YESNO | MB_ICONQUESTION), EMessageBoxAnswer::No);
    EXPECT_EQ(ShowMessageBox(nullptr, MB_OK | MB_ICONEXCLAMATION), EMessageBoxAnswer::No);
    EXPECT_TRUE(first.calls.empty());
    const std::vector<std::string> expected = {"FrontEnd.SetCapture(0)",
                                               "FrontEnd.SetCapture(77)",
                                               "FrontEnd.ReleaseCapture()",
                                               "FrontEnd.MessageBox(Sure?, 0x24)",
                                               "FrontEnd.MessageBox(, 0x30)"};
    EXPECT_EQ(second.calls, expected);
}

TEST(FrontEnd, TheDefaultHasNoWindows)
{
    CLogCatcher log;
    EXPECT_EQ(SetFrontEnd(nullptr), nullptr);
    EXPECT_FALSE(IsKeyDown(EKey::Alt));
    SetCursorPos({120, -3});
    EXPECT_EQ(GetCursorPos().x + 10 * GetCursorPos().y, 90);
    EXPECT_EQ(ShowMessageBox("100 %s full", MB_YESNO), EMessageBoxAnswer::Ok);
    EXPECT_EQ(log.TakeLines(), std::vector<std::string>{"100 %s full"});
}
