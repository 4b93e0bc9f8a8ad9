#include "editor/core/KeptFiles.h"

#include "host/FileBytes.h"
#include "host/FileSystem.h"
#include "host/IPluginBrushes.h"
#include "host/Log.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace
{

constexpr uint64_t MOST_BYTES = uint64_t{2} << 30; // longer ones get a second name

bool ReadBytes(const std::string& strFile, SFileBytes& bytes)
{
    std::string strError;
    return ReadFileBytes(strFile.c_str(), MOST_BYTES, bytes, strError) == EFileRead::Done;
}

// A second name does where the bytes may not be read.
bool WriteCopy(const std::string& strFile,
               const SFileBytes* pBytes,
               const std::string& strCopy,
               std::string& strFault)
{
    if (pBytes == nullptr)
    {
        std::error_code error;
        std::filesystem::create_hard_link(strFile, strCopy, error);
        strFault = strFile + ": " + error.message();
        return !error;
    }
    fs::file copy;
    const bool bWritten = copy.open(strCopy.c_str(), fs::mode_write) &&
                          copy.write(pBytes->pBytes.get(), pBytes->nCount) == pBytes->nCount &&
                          copy.close();
    strFault = copy.last_error().get_error_text();
    return bWritten;
}

bool IsBelow(const std::string& strFile, const std::string& strFolder)
{
    return strFile.starts_with(strFolder + "/");
}

} // namespace

std::string KeepFile(const std::string& strFile)
{
    SFileBytes bytes;
    const bool bRead = ReadBytes(strFile, bytes);
    std::string strCopy = strFile + ".bak";
    for (int i = 2; fs::exists(strCopy.c_str()); ++i)
    {
        SFileBytes copy;
        if (bRead && ReadBytes(strCopy, copy) && std::ranges::equal(copy.Get(), bytes.Get()))
        {
            return strCopy;
        }
        strCopy = strFile + ".bak" + std::to_string(i);
    }
    std::string strFault;
    if (!WriteCopy(strFile, bRead ? &bytes : nullptr, strCopy, strFault))
    {
        CrashLog("[KeepFile] no copy can be kept: %s\n", strFault.c_str());
        return {};
    }
    WarnLog("[KeepFile] %s is kept as %s\n", strFile.c_str(), strCopy.c_str());
    return strCopy;
}

void KeepFaultyBrushes(IPluginBrushes& brushes)
{
    std::string strName;
    fs::path_normalize(strName, brushes.GetBrushFile(), false);
    for (const SBrushFault& fault : brushes.GetBrushFaults())
    {
        const std::string strLine =
            fault.iLine > 0 ? ", line " + std::to_string(fault.iLine) : std::string();
        const std::string strBrush =
            fault.strBrush.empty() ? std::string() : ", brush \"" + fault.strBrush + "\"";
        WarnLog("[KeepFaultyBrushes] %s%s%s: %s\n",
                strName.c_str(),
                strLine.c_str(),
                strBrush.c_str(),
                fault.strFault.c_str());
    }
    // A library of the installation is never written to.
    const std::string strFile = fs::root_path(strName.c_str());
    if (!brushes.GetBrushFaults().empty() && IsBelow(strFile, fs::get_user_root()))
    {
        KeepFile(strFile);
    }
}
