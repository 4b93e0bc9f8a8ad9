#include "framework/core/Cursor.h"

#include "framework/core/IFrontEnd.h"
#include "framework/core/ResourceModule.h"

namespace
{

CursorHandle g_Cursor = nullptr;

} // namespace

CursorHandle LoadCursorResource(uint32_t uId)
{
    const SResourceModule* pModule = GetCurrentResourceModule();
    if (pModule != nullptr)
    {
        for (const SCursorResource& cursor : pModule->cursors)
        {
            if (cursor.uId == uId)
            {
                return &cursor;
            }
        }
    }
    return nullptr;
}

void SetCursor(CursorHandle pCursor)
{
    g_Cursor = pCursor;
    GetFrontEnd().SetCursor(pCursor);
}

CursorHandle GetCursor()
{
    return g_Cursor;
}
