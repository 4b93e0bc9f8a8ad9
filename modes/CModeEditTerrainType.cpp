#include "modes/CModeEditTerrainType.h"

namespace
{

constexpr uint32_t CURSOR_ID = 2113;
constexpr const char* CAPTION = "Edit terrain type";

} // namespace

CModeEditTerrainType::CModeEditTerrainType()
    : m_Cursor(LoadCursorResource(CURSOR_ID))
{
}

bool CModeEditTerrainType::SetCursor()
{
    if (m_Cursor == nullptr)
    {
        return false;
    }
    ::SetCursor(m_Cursor);
    return true;
}

void CModeEditTerrainType::Activate()
{
    TakeInput(CAPTION);
}

void CModeEditTerrainType::Suspend(bool bSuspended)
{
    if (!bSuspended)
    {
        TakeInput(CAPTION);
    }
}
