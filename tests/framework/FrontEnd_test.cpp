#include "framework/core/Capture.h"
#include "framework/core/Cursor.h"
#include "framework/core/CursorPos.h"
#include "framework/core/IFrontEnd.h"
#include "framework/core/KeyState.h"
#include "framework/core/MessageBox.h"
#include "tests/support/CLogCatcher.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

// Writes down what it is asked.
class CRecordingFrontEnd : public IFrontEnd
{
public:
    bool IsKeyDown(EKey eKey) const override { return eKey == EKey::Alt; }

    SScreenPoint GetCursorPos() const override { return {3, -4}; }

    void SetCursorPos(SScreenPoint point) override
    {
        calls.push_back("move " + std::to_string(point.x) + " " + std::to_string(point.y));
    }

    void SetCursor(const SCursorResource* pCursor) override
    {
        calls.push_back("cursor " + std::to_string(pCursor != nullptr ? pCursor->uId : 0));
    }

    void SetCapture(uintptr_t uWindow) override
    {
        calls.push_back("capture " + std::to_string(uWindow));
    }

    void ReleaseCapture() override { calls.emplace_back("release"); }

    EMessageBoxAnswer MessageBox(const char* pszText, uint32_t uFlags) override
    {
        calls.push_back(pszText + (" " + std::to_string(uFlags)));
        return EMessageBoxAnswer::No;
    }

    std::vector<std::string> calls;
};

} // namespace

TEST(FrontEnd, EverythingReachesTheOneInPlace)
{
    CRecordingFrontEnd first;
    CRecordingFrontEnd second;
    const SCursorResource cursor = {2106, nullptr, 0, 0, 0};
    EXPECT_EQ(SetFrontEnd(&first), nullptr);
    EXPECT_EQ(SetFrontEnd(&second), &first);
    EXPECT_TRUE(IsKeyDown(EKey::Alt));
    EXPECT_FALSE(IsKeyDown(EKey::Control));
    EXPECT_EQ(GetCursorPos().x + 10 * GetCursorPos().y, -37);
    SetCursorPos({5, 6});
    SetCursor(&cursor);
    EXPECT_EQ(GetCursor(), &cursor);
    SetCursor(nullptr);
    SetCapture(0);
    SetCapture(77);
    ReleaseCapture();
    EXPECT_EQ(ShowMessageBox("Sure?", MB_YESNO | MB_ICONQUESTION), EMessageBoxAnswer::No);
    EXPECT_EQ(ShowMessageBox(nullptr, MB_OK | MB_ICONEXCLAMATION), EMessageBoxAnswer::No);
    EXPECT_EQ(SetFrontEnd(nullptr), &second);
    EXPECT_TRUE(first.calls.empty());
    EXPECT_EQ(second.calls,
              (std::vector<std::string>{"move 5 6",
                                        "cursor 2106",
                                        "cursor 0",
                                        "capture 0",
                                        "capture 77",
                                        "release",
                                        "Sure? 36",
                                        " 48"}));
}

TEST(FrontEnd, TheDefaultHasNoWindows)
{
    CLogCatcher log;
    EXPECT_EQ(SetFrontEnd(nullptr), nullptr);
    for (const EKey eKey : {EKey::Control, EKey::Alt, EKey::Shift})
    {
        EXPECT_FALSE(IsKeyDown(eKey));
    }
    SetCursorPos({120, -3});
    EXPECT_EQ(GetCursorPos().x, 120);
    EXPECT_EQ(GetCursorPos().y, -3);
    SetCapture(5);
    ReleaseCapture();
    EXPECT_TRUE(log.GetText().empty());
    EXPECT_EQ(ShowMessageBox("100 %s full", MB_YESNO), EMessageBoxAnswer::Ok);
    EXPECT_EQ(log.TakeLines(), std::vector<std::string>{"100 %s full"});
}
