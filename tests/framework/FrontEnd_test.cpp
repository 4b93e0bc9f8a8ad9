#include "framework/core/CursorPos.h"
#include "framework/core/KeyState.h"
#include "framework/core/MessageBox.h"
#include "tests/support/CLogCatcher.h"

#include <gtest/gtest.h>

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
