#pragma once

#include "host/IPluginBrushes.h"
#include "tellur/brushes/CBrushChanges.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CFunctionContainer.h"

#include <vector>

// The functions that the plug-in knows, a tool brush of each, and the designer's predefined brushes
// with their file.
class CBrushLibrary : public IPluginBrushes
{
public:
    // Makes one function of each kind and its tool brush, in the order in which the panel and files
    // know them. What cannot be made is logged and left out.
    void InitializeFunctionsAndBrushes();
    // Reads the predefined brushes, after taking the copy beside their file back where a save was
    // interrupted.
    void LoadPredefined();
    // Asks for a name and adds a clone; false without a brush or a host and when cancelled.
    bool AddToPredefined(CTellurBrush* pBrush);

    CBrushContainer& GetBrushes() { return m_BrushContainer; }

    CBrushChanges& GetChanges() { return m_Changes; }

    CFunctionContainer& GetFunctions() { return m_FunctionContainer; }

    void ClearBrushes(); // and what could be taken back

    // IPluginBrushes
    const char* GetBrushFile() override;

    const std::vector<SBrushFault>& GetBrushFaults() override { return m_BrushFaults; }

    bool HasUnsavedBrushes() override { return m_BrushContainer.IsUnsaved(); }

    bool SaveBrushes() override;
    std::vector<SDefinedBrush> GetDefinedBrushes() override;

    uint64_t GetBrushRevision() override { return m_BrushContainer.GetState(); }

    void SetBrushTaker(IBrushTaker* pTaker) override { m_pTaker = pTaker; }

    void SetBrushSaveGuard(IBrushSaveGuard* pGuard) override
    {
        m_BrushContainer.SetSaveGuard(pGuard);
    }

    bool WriteToolBrush(fs::ifile& file, const char* pszFunction) override;

protected:
    // pCopy: that of the brush, which is current.
    void TellTaken(const CTellurBrush& brush, const CTellurBrush* pCopy);
    int32_t FindTaken(const CTellurBrush* pCopy) const; // the place of what it is a copy of, or -1

private:
    void CreateFunctions();

    CBrushContainer m_BrushContainer;
    CBrushChanges m_Changes{m_BrushContainer};
    CFunctionContainer m_FunctionContainer;
    std::vector<SBrushFault> m_BrushFaults; // of the file, as it was at the start
    IBrushTaker* m_pTaker = nullptr;        // borrowed
    // The latest brush that was taken, and its copy; to compare with only, they may be gone.
    const CTellurBrush* m_pTaken = nullptr;
    const CTellurBrush* m_pTakenCopy = nullptr;
};
