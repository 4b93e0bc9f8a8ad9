#pragma once

#include "tellur/painting/ITellur2DDrawUndoManager.h"

#include <memory>
#include <vector>

// Keeps of each stroke the texels that it changed, so that memory grows with the changes. Owned by
// the painting mode.
class CTellur2DDrawUndoManager : public ITellur2DDrawUndoManager
{
public:
    CTellur2DDrawUndoManager();
    ~CTellur2DDrawUndoManager() override;

    void AddEntry(const IImage* pBefore, const IImage* pAfter) override;
    void Clear() override;
    bool Undo(IImage* pImage) override;
    bool Redo(IImage* pImage) override;
    void SetStackSize(uint32_t uSize) override;

    uint32_t GetStackSize() const override { return m_Capacity; }

    uint32_t GetCount() const { return static_cast<uint32_t>(m_Entries.size()); }

    uint32_t GetPosition() const { return m_Position; }

private:
    struct SChange
    {
        uint32_t uIndex = 0; // of the texel
        uint32_t uOld = 0;   // all four bytes
        uint32_t uNew = 0;
    };

    struct SEntry
    {
        size_t nTexels = 0;           // of the image it was made for
        std::vector<SChange> changes; // in ascending order of the index
    };

    static void FindChanges(const IImage& before, const IImage& after, SEntry& entry);
    static bool Fits(const SEntry& entry, const IImage* pImage);

    uint32_t m_Capacity = 10;
    std::vector<std::unique_ptr<SEntry>> m_Entries; // oldest first
    uint32_t m_Position = 0;                        // the entries before it can be undone
};
