#include "host/Notice.h"

#include "host/FileSystem.h"
#include "host/NumberText.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace
{

INoticeSink* g_Sink = nullptr;

std::uintmax_t GetFileSize(const char* pszPath)
{
    std::error_code error; // a pipe or a device has none
    const std::uintmax_t uSize =
        pszPath != nullptr ? std::filesystem::file_size(fs::root_path(pszPath), error) : 0;
    return error ? 0 : uSize;
}

std::string FormatSize(std::uintmax_t uBytes)
{
    constexpr std::pair<double, const char*> UNITS[] = {
        {1.0e9, " GB"}, {1.0e6, " MB"}, {1.0e3, " KB"}};
    const auto fBytes = static_cast<double>(uBytes);
    for (const auto& [fUnit, pszUnit] : UNITS)
    {
        if (fBytes >= fUnit)
        {
            return FormatNumber(fBytes / fUnit, 1) + pszUnit;
        }
    }
    return std::to_string(uBytes) + " bytes";
}

} // namespace

INoticeSink* SetNoticeSink(INoticeSink* pSink)
{
    return std::exchange(g_Sink, pSink);
}

void Notice(const char* pszText)
{
    if (g_Sink != nullptr)
    {
        g_Sink->OnNotice(pszText);
    }
}

void StandingNotice(const char* pszTopic, const char* pszText)
{
    if (g_Sink != nullptr)
    {
        g_Sink->OnStandingNotice(pszTopic, pszText != nullptr ? pszText : "");
    }
}

void CSaveNotice::Say(const char* pszPath, const char* pszOther) const
{
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - m_Start;
    const std::string strPath = pszPath;
    const std::string strName = strPath.substr(strPath.find_last_of("/\\") + 1);
    Notice((strName + " saved: " + FormatSize(GetFileSize(pszPath) + GetFileSize(pszOther)) +
            " in " + FormatNumber(taken.count(), 2) + " s")
               .c_str());
}
