#include "tools/replay/CScriptFace.h"

#include "host/Log.h"

EMessageBoxAnswer CScriptFace::MessageBox(const char* pszText, uint32_t /*uFlags*/)
{
    LogR("%s\n", pszText);
    return EMessageBoxAnswer::Ok;
}
