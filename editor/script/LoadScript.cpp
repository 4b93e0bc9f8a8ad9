#include "editor/script/LoadScript.h"

#include "parser/TCParseFile.h"

#include <filesystem>
#include <system_error>

bool LoadScript(const std::string& strPath,
                std::unique_ptr<CTCPARSE_KEYWORD>& pFirst,
                std::string& strFault)
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(strPath, error);
    ETCParseStatus eStatus = tcparse_done;
    pFirst.reset(TCParseFile(error ? strPath.c_str() : path.c_str(),
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             &eStatus));
    if (eStatus != tcparse_done)
    {
        strFault = strPath + (eStatus == tcparse_unreadable ? ": cannot be read"
                                                            : ": cannot be parsed, see the log");
    }
    return eStatus == tcparse_done;
}
