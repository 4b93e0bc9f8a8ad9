#pragma once

#include "editor/core/CScratchFolder.h"
#include "engine/terrain/ITerrainListener.h"
#include "host/Progress.h"

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

class CUndoStack;
class IGroundCompanion;
class CWorld;

// What has replaced a terrain.
enum class EReplacement
{
    NewStep, // the undo stack has a new record of it
    Act,     // as this, and whoever did it tells the observers what it was
    Step,    // a record took its step, or there was no memory for a new one
};

// What a CLevelHeights asks of the host that owns it.
class ITerrainKeeper
{
public:
    virtual ~ITerrainKeeper() = default;

    virtual bool IsTerrainHeld() const = 0; // by a drag that has not ended
    // The terrain is about to be replaced. bByPlugin: from within a call of the plug-in.
    virtual void OnBeforeReplacement(bool bByPlugin) = 0;
    // The terrain was replaced.
    virtual void OnReplaced(EReplacement eBy) = 0;
};

// The heights of the open level as a whole: each command that replaces them is one step of the undo
// stack, and what the level's height-map file holds is known. A plug-in writes that file itself
// when it changes the resolution, old name first; the file's content is put back under its name
// before the new one is written, so that whatever stops the writing leaves a level that opens.
// Owned by the host. UI thread.
class CLevelHeights : public ITerrainListener
{
public:
    // Borrowed, outlive it. strScratch: base of the folder for what is only for this run.
    CLevelHeights(CWorld& world,
                  CUndoStack& stack,
                  ITerrainKeeper& keeper,
                  const std::string& strScratch);
    ~CLevelHeights() override;
    CLevelHeights(const CLevelHeights&) = delete;
    CLevelHeights& operator=(const CLevelHeights&) = delete;

    // Another base for that folder. Only before anything was kept.
    void SetScratchBase(const std::string& strBase);

    // Full path of the height map that the level names. A level without a file has one in the
    // scratch folder, where a plug-in may write it; it is not the level's and goes with it.
    std::string GetFile(const std::string& strName);

    // Replaces the heights of the open level by other valid ones (see CTerrain), as one step of the
    // undo stack. strText: what made them, for a list of steps.
    void Replace(SHeightField&& field, const std::string& strText);

    // The same for ground of this level that an act has reshaped, which tells what is protected.
    // pCompanion: what goes along; or null. False after one logged line, when there is no memory to
    // undo it, and nothing has changed.
    bool Change(SHeightField&& field,
                const std::string& strText,
                std::unique_ptr<IGroundCompanion> pCompanion);

    // To be called when the level is another one, or its file was written or read by the program
    // itself: the file then holds the present state of the undo stack.
    void SetSaved();

    // The state of the undo stack whose heights the level's file holds; none: of no state.
    std::optional<uint64_t> GetFileState() const { return m_FileState; }

    void SetFileState(std::optional<uint64_t> state) { m_FileState = state; }

    // Called when the level's file is another one because of this program; null: nobody is.
    void SetFileListener(std::function<void()> onFile) { m_OnFile = std::move(onFile); }

    // For CTerrainStep.
    CScratchFolder& GetScratch() { return *m_Scratch; }

    bool CanExchange() const; // false after one logged line
    SHeightField Exchange(SHeightField&& field);

    void TellExchanged() { m_Keeper.OnReplaced(EReplacement::Step); }

    // ITerrainListener
    bool OnBeforeSave(const char* pszPath, bool bOwn) override;
    void OnSaved(const char* pszPath, bool bOwn, bool bDone) override;
    void OnBeforeReload() override;
    void OnReloaded(SHeightField&& before) override;

private:
    bool SecureFile(const char* pszPath, bool bOwn);
    bool KeepOther(const std::string& strPath);
    void NoteFile(const char* pszPath, bool bOwn, bool bDone, bool bOther);
    bool IsLevelFile(const char* pszPath) const;
    std::string GetSpareFile() const;
    void AdaptToGround(const SHeightField& before);
    bool AddStep(SHeightField&& before,
                 const char* pszText,
                 std::unique_ptr<IGroundCompanion> pCompanion = nullptr);

    CWorld& m_World;
    CUndoStack& m_Stack;
    ITerrainKeeper& m_Keeper;
    std::unique_ptr<CScratchFolder> m_Scratch;
    std::optional<uint64_t> m_FileState;   // none: no state of the stack
    std::optional<CUncancellable> m_Whole; // while a plug-in writes the level's file
    std::function<void()> m_OnFile;
    std::string m_Backup;     // that a plug-in has just made of the level's file
    bool m_bPutBack = false;  // its content was put back
    bool m_bUsersFile = true; // the level's file holds what a person has saved
    std::string m_Asked;      // the path that was last given to a plug-in
    dev_t m_AskedDevice = 0;  // and the file that lay there
    ino_t m_AskedFile = 0;    // 0: none
};
