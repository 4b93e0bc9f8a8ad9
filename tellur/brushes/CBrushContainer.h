#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class CTellurBrush;
class IBrushSaveGuard;
class ITellurFunction;
struct SBrushFault;

// The brushes of the plug-in: the predefined ones, a library that is read from and written to a
// file, and one tool brush per function that the panel edits. Owned by the plug-in object, owns the
// brushes.
class CBrushContainer
{
public:
    using CBrushList = std::vector<std::unique_ptr<CTellurBrush>>;

    CBrushContainer();
    virtual ~CBrushContainer();
    CBrushContainer(const CBrushContainer&) = delete;
    CBrushContainer& operator=(const CBrushContainer&) = delete;

    // False with one logged line without a path, when a brush cannot be saved and when the file
    // cannot be written; the file then stays as it was.
    bool SavePredefinedBrushesToFile(const char* pszPath);
    // Appends the brushes of the file; a missing or faulty file adds nothing. False when there is
    // no such file to read. pFaults: receives what of the file could not be used; null for nothing.
    bool LoadPredefinedBrushes(const char* pszPath, std::vector<SBrushFault>* pFaults = nullptr);
    // Appends a clone; with bRename the clone gets a fresh name. The caller keeps its brush.
    void AddBrush(const CTellurBrush* pBrush, bool bRename);
    // Names the brush after its own name without trailing digits, numbered past the others.
    void GetNextBrushName(CTellurBrush* pBrush);
    // The tool brush of that function, made when there is none; takes pFunction only when it makes
    // one. Null with one logged line when an argument is missing.
    CTellurBrush*
    CreateBrush(const char* pszFunctionName, ITellurFunction* pFunction, const char* pszImagePath);
    // Replaces the tool brush of the same function. Takes the brush on success. The old one is
    // destroyed, or given to pReplaced.
    bool SetBrush(CTellurBrush* pBrush, std::unique_ptr<CTellurBrush>* pReplaced = nullptr);
    CTellurBrush* FindBrush(const char* pszFunctionName) const; // a tool brush, null when unknown
    void ClearPredefined();
    void Clear(); // both lists

    // Changes of the predefined list, by place. A brush that is taken out is the caller's; a place
    // must be one of the list, for inserting the one behind its end, too.
    void InsertPredefined(size_t iPlace, std::unique_ptr<CTellurBrush> pBrush);
    std::unique_ptr<CTellurBrush> TakePredefined(size_t iPlace);
    void RenamePredefined(size_t iPlace, const char* pszName);

    // What the predefined list is like at present: each change gives a number that was none before.
    // Whoever has put back what was there before says so with that number.
    uint64_t GetState() const { return m_State; }

    void SetState(uint64_t uState) { m_State = uState; }

    // Whether the list is another one than what was saved, or read as a file. Whoever has saved it
    // says so: the container does not know which file is the library's.
    bool IsUnsaved() const { return m_State != m_SavedState; }

    void SetSaved();

    // Whoever is about to save it asks first. pGuard: borrowed, told of saves, too; null: nobody.
    bool MaySave() const;

    void SetSaveGuard(IBrushSaveGuard* pGuard) { m_pSaveGuard = pGuard; }

    const CBrushList& GetPredefined() const { return m_Predefined; }

    const CBrushList& GetTools() const { return m_Tools; }

private:
    enum class EChange
    {
        Edit, // the file lacks it
        Load, // or a clean sweep: no reason to save by itself
    };

    void NoteChange(EChange eChange);

    CBrushList m_Predefined;
    CBrushList m_Tools;
    uint64_t m_States = 1; // the latest number given
    uint64_t m_State = 1;
    uint64_t m_SavedState = 1;
    IBrushSaveGuard* m_pSaveGuard = nullptr; // borrowed
};
