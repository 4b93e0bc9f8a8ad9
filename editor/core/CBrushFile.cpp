#include "editor/core/CBrushFile.h"

#include "editor/core/FileBackup.h"
#include "editor/core/KeptFiles.h"
#include "editor/core/Words.h"
#include "host/FileSystem.h"
#include "host/IPlugin.h"
#include "host/Log.h"
#include "host/Notice.h"

#include <filesystem>

namespace
{

constexpr char TOPIC[] = "brushes that cannot be saved";
constexpr size_t MOST_NAMES = 3;

// Where the plug-in saves to. One of the installation is read and never written.
std::string GetPath(IPluginBrushes& brushes)
{
    std::string strName;
    fs::path_normalize(strName, brushes.GetBrushFile(), false);
    const std::string strUser = fs::get_user_root() + '/';
    const std::string strPath = fs::root_path(strName.c_str());
    return strPath.starts_with(strUser) ? strPath : strUser + strName;
}

std::string GetName(const std::string& strPath)
{
    return std::filesystem::path(strPath).filename().string();
}

} // namespace

std::string GetSaveHindrance(const std::vector<SDefinedBrush>& brushes)
{
    std::string strNames;
    size_t nFound = 0;
    for (const SDefinedBrush& brush : brushes)
    {
        if (!brush.strImage.empty() && !brush.strFunction.empty())
        {
            continue;
        }
        if (nFound++ < MOST_NAMES)
        {
            strNames +=
                (strNames.empty() ? "\"" : ", \"") + brush.strName +
                (brush.strImage.empty() ? Words("\" (no image)") : Words("\" (no function)"));
        }
    }
    if (nFound == 0)
    {
        return {};
    }
    if (nFound > MOST_NAMES)
    {
        strNames += Words(" and ") + std::to_string(nFound - MOST_NAMES) + Words(" more");
    }
    return Words("The brushes cannot be saved until ") + strNames +
           (nFound == 1 ? Words(" is removed") : Words(" are removed together"));
}

void CBrushFile::Begin(IPlugin* pPlugin)
{
    m_pBrushes = dynamic_cast<IPluginBrushes*>(pPlugin);
    if (m_pBrushes != nullptr)
    {
        m_Stamp = CFileStamp(GetPath(*m_pBrushes));
        m_bFaulty = !m_pBrushes->GetBrushFaults().empty();
        m_pBrushes->SetBrushSaveGuard(this);
        m_uRevision = 0;
        Follow();
    }
}

void CBrushFile::End()
{
    if (m_pBrushes != nullptr)
    {
        m_pBrushes->SetBrushSaveGuard(nullptr);
        StandingNotice(TOPIC, nullptr);
        m_pBrushes = nullptr;
    }
}

void CBrushFile::Follow()
{
    if (m_pBrushes == nullptr || m_pBrushes->GetBrushRevision() == m_uRevision)
    {
        return;
    }
    m_uRevision = m_pBrushes->GetBrushRevision();
    const std::string strWhy = GetSaveHindrance(m_pBrushes->GetDefinedBrushes());
    StandingNotice(TOPIC, strWhy.empty() ? nullptr : (strWhy + " (F4)").c_str());
}

bool CBrushFile::MayReplaceBrushFile()
{
    const std::string& strPath = m_Stamp.GetPath();
    if (m_Stamp.IsChanged())
    {
        m_Kept = KeepBeside(strPath);
        if (m_Kept.empty())
        {
            return Refuse();
        }
        WarnLog("[CBrushFile::MayReplaceBrushFile] another program has changed %s, which is kept "
                "as %s\n",
                GetName(strPath).c_str(),
                m_Kept.c_str());
        m_Stamp = CFileStamp(strPath);
        m_bFaulty = false;
    }
    // It was kept when it was read, unless that was not possible then.
    else if (m_bFaulty && fs::exists(strPath.c_str()) && KeepFile(strPath).empty())
    {
        return Refuse();
    }
    return true;
}

bool CBrushFile::Refuse()
{
    CrashLog("[CBrushFile::MayReplaceBrushFile] %s is not replaced: what is in it cannot be kept\n",
             GetName(m_Stamp.GetPath()).c_str());
    return false;
}

void CBrushFile::OnBrushFileSaved()
{
    m_Stamp = CFileStamp(m_Stamp.GetPath());
    m_bFaulty = false;
    if (!m_Kept.empty())
    {
        const std::string strName = GetName(m_Stamp.GetPath());
        Notice((strName + Words(" is saved; what another program had put there is kept as ") +
                GetName(m_Kept))
                   .c_str());
        m_Kept.clear();
    }
}
