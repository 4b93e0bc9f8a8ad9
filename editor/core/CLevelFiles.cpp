#include "editor/core/CLevelFiles.h"

#include "editor/core/ProtectionPicture.h"
#include "editor/core/SLevelText.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "host/FileSystem.h"
#include "host/Log.h"
#include "parser/DeclarativeText.h"

#include <filesystem>
#include <system_error>

namespace
{

constexpr char OPERATION[] = "CLevelDocument::Save";

} // namespace

ETCParseStatus CLevelFiles::ReadText(const std::string& strPath, SLevelText& text)
{
    m_Text = CFileStamp(strPath);
    const ETCParseStatus eStatus = m_Kept.Read(strPath.c_str());
    text.strPath = strPath;
    return eStatus == tcparse_done && !text.Read(m_Kept.GetFirst()) ? tcparse_failed : eStatus;
}

void CLevelFiles::Distrust()
{
    m_Text.Forget();
    m_Heights.Forget();
    m_Protection.Forget();
}

std::vector<SReplacedFile> CLevelFiles::FindReplaced(const std::vector<std::string>& targets,
                                                     const std::string& strConfirmed) const
{
    std::vector<SReplacedFile> found;
    for (const std::string& strTarget : targets)
    {
        std::error_code error;
        const std::filesystem::file_status status = std::filesystem::status(strTarget, error);
        if (strTarget == strConfirmed || !std::filesystem::is_regular_file(status))
        {
            continue;
        }
        const CFileStamp* pOwn = nullptr;
        for (const CFileStamp* pStamp : {&m_Protection, &m_Heights, &m_Text})
        {
            pOwn = strTarget == pStamp->GetPath() ? pStamp : pOwn;
        }
        if (pOwn == nullptr || pOwn->IsChanged())
        {
            found.push_back({strTarget, pOwn != nullptr});
        }
    }
    return found;
}

bool CLevelFiles::Write(CTerrain& terrain, const SLevelText& text)
{
    m_Outcome = Words("Nothing was written.");
    const CFileStamp before =
        m_Heights; // told of the heights, the document looks at them too early
    fs::commit_group group;
    // The old text reads new heights, while a new one may name heights that are not there yet.
    if (!terrain.SaveHeightMap(text.strHeightMap.c_str(), nullptr, 0, 0) ||
        (!text.strProtection.empty() &&
         !WriteProtection(text.strProtection, terrain.GetProtection())) ||
        !WriteTextFile(OPERATION, text.strPath, text.Write(m_Kept)))
    {
        m_Heights = before;
        return false;
    }
    const bool bDone = group.commit();
    if (!bDone)
    {
        CrashLog("[%s] %s\n", OPERATION, group.last_error().get_error_text());
    }
    if (!bDone && !group.is_mixed())
    {
        m_Heights = before;
        return false;
    }
    m_Outcome = bDone ? "" : Words("Only a part of it was written.");
    m_Text = CFileStamp(text.strPath);
    m_Heights = CFileStamp(text.strHeightMap);
    NoteSavedProtection(text, bDone);
    return bDone;
}

void CLevelFiles::NoteSavedProtection(const SLevelText& text, bool bDone)
{
    const std::string strBefore = m_Protection.GetPath();
    // A picture that another hand has changed, or named, is not ours to remove.
    const std::string strName = std::filesystem::path(text.strPath).stem().string();
    const bool bOurs =
        std::filesystem::path(strBefore).filename().string() == strName + PROTECTION_EXTENSION;
    if (bOurs && bDone && text.strProtection.empty() && !strBefore.empty() &&
        !m_Protection.IsChanged() && m_ProtectedText == text.strPath)
    {
        std::error_code error;
        std::filesystem::remove(strBefore, error);
    }
    NoteProtection(text.strProtection);
}

void CLevelFiles::NoteProtection(const std::string& strPath)
{
    m_Protection = strPath.empty() ? CFileStamp() : CFileStamp(strPath);
    m_ProtectedText = m_Text.GetPath();
}
