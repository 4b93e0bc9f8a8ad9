#pragma once

#include "editor/core/CLevelChanges.h"
#include "editor/core/CLevelFiles.h"
#include "editor/core/IHostObserver.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class CEditorHost;
class CTerrain;
struct SLevelText;

// The open level as a document: where its file is, what the file says beside the heights, and
// whether anything of it is not saved. A level is a text file that names its height map, its
// terrain-type bitmap and its material. Owned by the program; opens and saves through the host that
// it borrows for its life. Operations return false after one logged line, and the level is then as
// it was. UI thread.
class CLevelDocument : public IHostObserver
{
public:
    explicit CLevelDocument(CEditorHost& host); // borrowed, outlives the document
    ~CLevelDocument() override;
    CLevelDocument(const CLevelDocument&) = delete;
    CLevelDocument& operator=(const CLevelDocument&) = delete;

    // Makes a square level without a file. uCells: per side, 1 to 16384. size: terrain units, y is
    // the highest height. fHeight: of all vertices, kept within the level's.
    bool New(uint32_t uCells, const SVec3& size, float fHeight = 0.0F);
    // Opens a level file, or a ".height" file, which becomes a level without a file of its own.
    bool Open(const char* pszPath);

    // The height map that the last Open did not find, while a backup of it is there; else empty.
    const std::string& GetMissingHeights() const { return m_MissingHeights; }

    // Writes heights and level file so that whatever is on the disk at any moment opens. What
    // another program knows in the file stays. Only with a path. Nobody is asked; see FindReplaced.
    bool Save();
    // The heights go to "NAME.height" beside "NAME.level". Appends the extension when there is
    // none.
    bool SaveAs(const char* pszPath);
    // Files that Save, or SaveAs with a path, would replace: others, and the level's own when
    // another hand has changed them. Without the one at pszPath if a person has agreed to that.
    std::vector<SReplacedFile> FindReplaced() const;
    std::vector<SReplacedFile> FindReplaced(const char* pszPath, bool bConfirmed) const;

    // As CLevelFiles::GetOutcome, of the last save.
    const std::string& GetSaveOutcome() const { return m_Files.GetOutcome(); }

    // Takes another level over that is not as its files are, and counts as modified. change: makes
    // the host's level another one, and fills in what is known of the files; false when it could
    // not, and nothing has happened then. text: what a level file would say; its sizes are the
    // terrain's. flatHeight: as GetFlatHeight.
    bool TakeOver(const SLevelText& text,
                  const std::function<bool(CLevelFiles& files)>& change,
                  std::optional<float> flatHeight = {});

    // Full path of the level file; empty for a level without one.
    const std::string& GetPath() const { return m_Path; }

    // For a window's title: the file's name; that of the height map without one; else "Untitled", a
    // key of Words.
    std::string GetTitle() const;
    // Full path of the level's height map; empty for a new level.
    std::string GetHeightPath() const;
    // Where the level lies, for dialogs; empty when it has no file.
    std::string GetFolder() const;

    // Heights or settings differ from what the level's files hold. A level that was undone back to
    // the step it was saved at does not, unless its height map was written anew since.
    bool IsModified() const { return m_Changes.IsModified(!m_Path.empty()); }

    bool HasLevel() const { return GetTerrain() != nullptr; }

    // As the level file has them: relative to the roots, or absolute. Empty for none.
    const std::string& GetBitmap() const { return m_Bitmap; }

    const std::string& GetMaterial() const { return m_Material; }

    void SetBitmap(const std::string& strPath);
    void SetMaterial(const std::string& strPath);

    // Names another bitmap as a part of a step of the history, which undo takes back.
    void SwapBitmap(std::string& strOther) { m_Bitmap.swap(strOther); }

    SLevelText GetText() const; // what a level file would say now

    // Grows when another level is opened or made; saving keeps it.
    uint64_t GetGeneration() const { return m_Generation; }

    // Grows when the files take over what is in memory, and the other way round.
    uint64_t GetSavings() const { return m_Changes.GetSavings(); }

    // The height of all vertices of a level that was made here, is square and was never saved.
    std::optional<float> GetFlatHeight() const { return m_FlatHeight; }

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

private:
    CTerrain* GetTerrain() const; // null without a level
    bool ChangeLevel(const std::function<bool()>& change);
    bool WriteTo(const SLevelText& text);
    SLevelText GetSavedText(const char* pszPath) const;
    void ReadProtection(SLevelText& text, CLevelFiles& files) const;
    void SetSource(const SLevelText& text, CLevelFiles&& files);

    CEditorHost& m_Host;
    CLevelFiles m_Files;
    CLevelChanges m_Changes;
    std::string m_Path;
    std::string m_MissingHeights;
    std::string m_Bitmap;
    std::string m_Material;
    std::string m_Protection; // full path of the picture that the level file names; empty for none
    bool m_bUnreadProtection = false; // the level file names a picture that could not be used
    uint64_t m_Generation = 0;
    std::optional<float> m_FlatHeight;
    bool m_bOpening = false; // this opens a level, and knows what it is
};
