#include "tellur/resources/Controls.h"
#include "tellur/resources/DialogTables.h"

namespace
{

// The dialog's code makes the palette window over its client area, 337 x 337 pixels at 100 %. That
// much is left free for every font whose lines are 14 pixels high and whose characters are 6 wide,
// or more.
constexpr int PALETTE_LINES = 25;
constexpr int PALETTE_WIDTH = 57;
constexpr int BUTTON_WIDTH = 10;

constexpr SControlResource PALETTE[] = {{.eKind = EControlKind::Space, .iWidth = PALETTE_WIDTH}};
constexpr SControlResource BUTTONS[] = {
    {.eKind = EControlKind::Space, .iWeight = 1},
    {.uId = 1,
     .eKind = EControlKind::PushButton,
     .pszText = "OK",
     .iWidth = BUTTON_WIDTH,
     .uStyle = CONTROL_DEFAULT},
    {.uId = 2, .eKind = EControlKind::PushButton, .pszText = "Cancel", .iWidth = BUTTON_WIDTH}};
constexpr SRowResource ROWS[] = {{PALETTE, PALETTE_LINES}, {BUTTONS}};
constexpr SGroupResource GROUPS[] = {{nullptr, ROWS}};

} // namespace

SDialogResource GetColorDialog()
{
    return {2114, "Choose color", GROUPS};
}
