#include "tellur/brushes/BrushFileCopy.h"

#include "host/FileSystem.h"

std::string GetBrushFileCopy(const std::string& strPath)
{
    const size_t iName = strPath.find_last_of("/\\") + 1; // 0 when there is no folder
    const size_t iDot = strPath.rfind('.');
    const bool bExtension = iDot != std::string::npos && iDot > iName;
    std::string strCopy = strPath;
    return strCopy.insert(bExtension ? iDot : strPath.size(), "__Copy");
}

void RecoverBrushFile(const std::string& strPath)
{
    const std::string strCopy = GetBrushFileCopy(strPath);
    if (!fs::exists(strPath.c_str()) && fs::exists(strCopy.c_str()))
    {
        fs::rename(strCopy.c_str(), strPath.c_str());
    }
}
