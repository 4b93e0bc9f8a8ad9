#include "tools/replay/CScriptFace.h"

#include "host/Log.h"

bool CScriptFace::PrepareWindows()
{
    if (m_Windows == nullptr)
    {
        m_Windows = std::make_unique<COffscreenWindows>();
    }
    return true;
}

EMessageBoxAnswer CScriptFace::MessageBox(const char* pszText, uint32_t /*uFlags*/)
{
    LogR("%s\n", pszText);
    return EMessageBoxAnswer::Ok;
}
