#include "tellur/panel/SaveBrushes.h"

#include "host/FileSystem.h"
#include "host/Notice.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CBrushContainer.h"

bool SaveBrushesWithCopy(CBrushContainer& brushes, const char* pszPath)
{
    if (!brushes.MaySave())
    {
        return false;
    }
    const CSaveNotice notice;
    const std::string strCopy = GetBrushFileCopy(pszPath);
    // A copy without its file is all that there is: it goes once the new file is there.
    const bool bAlone = !fs::exists(pszPath);
    // A rename replaces no file, so a copy from before has to go first.
    if (!bAlone)
    {
        fs::remove(strCopy.c_str());
    }
    const bool bRenamed = fs::rename(pszPath, strCopy.c_str()) == 0;
    if (!brushes.SavePredefinedBrushesToFile(pszPath))
    {
        if (bRenamed)
        {
            fs::remove(pszPath);
            fs::rename(strCopy.c_str(), pszPath);
        }
        return false;
    }
    if (bRenamed || bAlone)
    {
        fs::remove(strCopy.c_str());
    }
    notice.Say(pszPath);
    brushes.SetSaved();
    return true;
}
