#pragma once

#include <memory>
#include <vector>

class CTellurBrush;
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

    // Whether a brush was added since the library was saved. Whoever has saved it says so: the
    // container does not know which file is the library's.
    bool IsUnsaved() const { return m_bUnsaved; }

    void SetSaved() { m_bUnsaved = false; }

    const CBrushList& GetPredefined() const { return m_Predefined; }

    const CBrushList& GetTools() const { return m_Tools; }

private:
    CBrushList m_Predefined;
    CBrushList m_Tools;
    bool m_bUnsaved = false;
};
