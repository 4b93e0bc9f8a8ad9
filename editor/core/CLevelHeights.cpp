#include "editor/core/CLevelHeights.h"

#include "editor/core/CTerrainStep.h"
#include "editor/core/CUndoStack.h"
#include "editor/core/FileBackup.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/HeightFile.h"
#include "engine/world/CEnvironment.h"
#include "engine/world/CWorld.h"
#include "host/FileSystem.h"
#include "host/Log.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace
{

constexpr char SPARE_NAME[] = "/level.height";
constexpr char BACKUP_SUFFIX[] = ".bak";

bool IsFile(const std::string& strPath, dev_t device, ino_t file)
{
    struct stat info = {};
    return ::stat(strPath.c_str(), &info) == 0 && info.st_dev == device && info.st_ino == file;
}

} // namespace

CLevelHeights::CLevelHeights(CWorld& world,
                             CUndoStack& stack,
                             ITerrainKeeper& keeper,
                             const std::string& strScratch)
    : m_World(world)
    , m_Stack(stack)
    , m_Keeper(keeper)
    , m_Scratch(std::make_unique<CScratchFolder>(strScratch))
{
    m_World.SetTerrainListener(this);
}

CLevelHeights::~CLevelHeights()
{
    m_World.SetTerrainListener(nullptr);
}

void CLevelHeights::SetScratchBase(const std::string& strBase)
{
    m_Scratch = std::make_unique<CScratchFolder>(strBase);
}

std::string CLevelHeights::GetSpareFile() const
{
    return m_Scratch->GetPath() + SPARE_NAME;
}

std::string CLevelHeights::GetFile(const std::string& strName)
{
    m_Asked = strName.empty() ? GetSpareFile() : fs::root_path(strName.c_str());
    if (strName.empty())
    {
        m_World.GetCEnvironment()->SetSpareName(m_Asked);
    }
    struct stat info = {};
    // What lies there now is remembered by its node: a plug-in gives the file another name before
    // it writes, and SecureFile must know it again.
    const bool bThere = ::stat(m_Asked.c_str(), &info) == 0;
    m_AskedDevice = bThere ? info.st_dev : 0;
    m_AskedFile = bThere ? info.st_ino : 0;
    return m_Asked;
}

void CLevelHeights::Replace(SHeightField&& field, const std::string& strText)
{
    m_Keeper.OnBeforeReplacement(false);
    if (!m_World.GetCTerrain()->GetProtection().IsEmpty())
    {
        WarnLog("[CLevelHeights] what was protected lay on other ground: nothing is protected now; "
                "undo "
                "brings it back\n");
    }
    const bool bAdded =
        AddStep(m_World.GetCTerrain()->ReplaceField(std::move(field)), strText.c_str());
    m_Keeper.OnReplaced(bAdded ? EReplacement::NewStep : EReplacement::Step);
}

bool CLevelHeights::Change(SHeightField&& field,
                           const std::string& strText,
                           std::unique_ptr<IGroundCompanion> pCompanion)
{
    m_Keeper.OnBeforeReplacement(false);
    if (pCompanion != nullptr)
    {
        pCompanion->Swap();
    }
    const bool bAdded = AddStep(m_World.GetCTerrain()->ReplaceField(std::move(field)),
                                strText.c_str(),
                                std::move(pCompanion));
    m_Keeper.OnReplaced(bAdded ? EReplacement::Act : EReplacement::Step);
    return bAdded;
}

// False when there is no memory for it; the terrain of before is then back.
bool CLevelHeights::AddStep(SHeightField&& before,
                            const char* pszText,
                            std::unique_ptr<IGroundCompanion> pCompanion)
{
    try
    {
        // Only what comes before Hold can lack memory, so the heights are still here for the way
        // back.
        std::string strText = pszText;
        auto pStep = std::make_unique<CTerrainStep>(*this);
        pStep->Hold(std::move(before), std::move(pCompanion));
        const size_t nBytes = pStep->GetMemory();
        return m_Stack.Add(pStep.release(), std::move(strText), nBytes);
    }
    catch (const std::bad_alloc&)
    {
        m_World.GetCTerrain()->ReplaceField(std::move(before));
        if (pCompanion != nullptr)
        {
            pCompanion->Swap();
        }
        CrashLog("[CLevelHeights] not enough memory to undo what replaces the terrain; it stays\n");
        return false;
    }
}

void CLevelHeights::SetSaved()
{
    m_FileState = m_Stack.GetStateId();
    m_bUsersFile = true;
    std::error_code error; // there mostly is none
    std::filesystem::remove(GetSpareFile(), error);
    std::filesystem::remove(GetSpareFile() + BACKUP_SUFFIX, error);
}

bool CLevelHeights::CanExchange() const
{
    if (m_Keeper.IsTerrainHeld())
    {
        CrashLog("[CLevelHeights] the terrain cannot be exchanged while a button is held\n");
        return false;
    }
    return true;
}

SHeightField CLevelHeights::Exchange(SHeightField&& field)
{
    m_Keeper.OnBeforeReplacement(false);
    return m_World.GetCTerrain()->ReplaceField(std::move(field));
}

bool CLevelHeights::IsLevelFile(const char* pszPath) const
{
    const CEnvironment* pEnvironment = m_World.GetCEnvironment();
    const std::string strName = pEnvironment != nullptr ? pEnvironment->GetHeightMapName() : "";
    return pszPath != nullptr && !strName.empty() &&
           fs::root_path(pszPath) == fs::root_path(strName.c_str());
}

bool CLevelHeights::OnBeforeSave(const char* pszPath, bool bOwn)
{
    try
    {
        return SecureFile(pszPath, bOwn);
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[CLevelHeights] not enough memory to keep the height map that is there\n");
        return pszPath == nullptr || ::access(pszPath, F_OK) != 0; // nothing is replaced
    }
}

bool CLevelHeights::SecureFile(const char* pszPath, bool bOwn)
{
    const std::string strPath = pszPath != nullptr ? pszPath : "";
    // Only the path that a plug-in has asked for is the level's file; what else it writes is its
    // own matter.
    if (bOwn || strPath.empty() || strPath != m_Asked)
    {
        return true;
    }
    // Cancelling would leave the level without its file: the plug-in has given the old one another
    // name already.
    m_Whole.emplace();
    if (strPath == GetSpareFile())
    {
        m_Scratch->Make();
    }
    // Only the backup that was made a moment ago; an older one has other heights.
    const std::string strBackup = FindHeightBackup(strPath);
    if (!strBackup.empty() && m_AskedFile != 0 && IsFile(strBackup, m_AskedDevice, m_AskedFile))
    {
        m_Backup = strBackup;
        // One that nobody may write would be in the way of the new file: put back after a failure.
        m_bPutBack = !fs::read_only(strBackup.c_str()) && PutBackFile(strBackup, strPath);
        return true;
    }
    const bool bSaved = m_bUsersFile && strPath != GetSpareFile() && m_AskedFile != 0 &&
                        IsFile(strPath, m_AskedDevice, m_AskedFile);
    return !bSaved || KeepOther(strPath); // an older backup has the name
}

// What a person has saved is not replaced by what undo and closing may leave unsaved.
bool CLevelHeights::KeepOther(const std::string& strPath)
{
    const std::string strOther = KeepBeside(strPath);
    if (!strOther.empty())
    {
        WarnLog("[CLevelHeights] %s as it was saved is kept as %s\n",
                strPath.c_str(),
                strOther.c_str());
    }
    return !strOther.empty();
}

void CLevelHeights::OnSaved(const char* pszPath, bool bOwn, bool bDone)
{
    m_Whole.reset();
    const std::string strBackup = std::exchange(m_Backup, std::string());
    const bool bPutBack = std::exchange(m_bPutBack, false);
    try
    {
        // Where the plug-in could not write, its old file has another name by now and gets this one
        // back.
        const bool bMissing = !bDone && !strBackup.empty() && ::access(pszPath, F_OK) != 0;
        const bool bOther = bMissing ? PutBackFile(strBackup, pszPath) : bPutBack;
        NoteFile(pszPath, bOwn, bDone, bOther || bDone);
    }
    catch (const std::bad_alloc&)
    {
        m_FileState.reset(); // what is not known counts as not saved
    }
}

void CLevelHeights::NoteFile(const char* pszPath, bool bOwn, bool bDone, bool bOther)
{
    if (!IsLevelFile(pszPath))
    {
        return;
    }
    m_bUsersFile = bDone ? bOwn : m_bUsersFile;
    if (bOwn && bDone)
    {
        m_FileState = m_Stack.GetStateId();
    }
    else if (!bOwn || !fs::exists(pszPath))
    {
        m_FileState.reset(); // also where it failed: the next save writes the file anew
    }
    if (bOther && m_OnFile)
    {
        m_OnFile();
    }
}

void CLevelHeights::OnBeforeReload()
{
    m_Keeper.OnBeforeReplacement(true);
}

// It is the same ground, so what was protected stays so, and it lies where it did.
void CLevelHeights::AdaptToGround(const SHeightField& before)
{
    CTerrain& terrain = *m_World.GetCTerrain();
    try
    {
        terrain.SetGeoTags(before.geo);
        terrain.GetProtection() =
            before.protection.Resampled(terrain.GetVerticesX(), terrain.GetVerticesZ());
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[CLevelHeights] not enough memory to keep what is protected\n");
    }
}

void CLevelHeights::OnReloaded(SHeightField&& before)
{
    const CTerrain& terrain = *m_World.GetCTerrain();
    AdaptToGround(before);
    const bool bResized =
        before.uSizeX != terrain.GetVerticesX() || before.uSizeZ != terrain.GetVerticesZ();
    // No string is made, since nothing here may lack memory.
    char szText[256];
    if (bResized)
    {
        std::snprintf(szText,
                      sizeof(szText),
                      "%s%u x %u",
                      Words("Resolution "),
                      terrain.GetVerticesX(),
                      terrain.GetVerticesZ());
    }
    const bool bAdded = AddStep(std::move(before), bResized ? szText : Words("Reload"));
    // A height map that was just read holds the heights of the present step.
    if (bAdded && *m_World.GetCEnvironment()->GetHeightMapName() != '\0')
    {
        m_FileState = m_Stack.GetStateId();
    }
    m_Keeper.OnReplaced(bAdded ? EReplacement::NewStep : EReplacement::Step);
}
