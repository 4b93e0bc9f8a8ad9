#include "tellur/painting/CTellur2DDrawUndoManager.h"

#include "host/IPaintLayer.h"
#include "host/Image.h"
#include "host/VectorLoop.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr uint32_t BITS = 32; // of a texel
// Texels that are compared at one go. Most of a bitmap is the same after a stroke, and blocks that
// are the same are looked at once, at the speed of reading them.
constexpr size_t BLOCK_TEXELS = 1024;

size_t GetTexelCount(const IImage& image)
{
    return size_t{image.GetWidth()} * image.GetHeight();
}

uint32_t GetTexel(const uint8_t* pTexels, size_t nIndex)
{
    uint32_t uTexel = 0;
    std::memcpy(&uTexel, pTexels + nIndex * PAINT_TEXEL_BYTES, PAINT_TEXEL_BYTES);
    return uTexel;
}

TELLUR_LOOP_BODY size_t CountDifferent(const uint8_t* pOld, const uint8_t* pNew, size_t nTexels)
{
    uint32_t uDifferent = 0; // a block's worth
    for (size_t i = 0; i < nTexels; ++i)
    {
        uDifferent += GetTexel(pOld, i) != GetTexel(pNew, i) ? 1U : 0U;
    }
    return uDifferent;
}

} // namespace

CTellur2DDrawUndoManager::CTellur2DDrawUndoManager() = default;

CTellur2DDrawUndoManager::~CTellur2DDrawUndoManager() = default;

void CTellur2DDrawUndoManager::AddEntry(const IImage* pBefore, const IImage* pAfter)
{
    if (pBefore == nullptr || pAfter == nullptr)
    {
        return;
    }
    while (GetCount() > m_Position)
    {
        m_Entries.pop_back();
    }
    if (GetCount() == m_Capacity && !m_Entries.empty())
    {
        m_Entries.erase(m_Entries.begin());
        --m_Position;
    }
    // Kept as it always was: a stroke that changed nothing is an entry, too, whose undo does
    // nothing.
    auto pEntry = std::make_unique<SEntry>();
    FindChanges(*pBefore, *pAfter, *pEntry);
    m_Entries.push_back(std::move(pEntry));
    ++m_Position;
}

void CTellur2DDrawUndoManager::FindChanges(const IImage& before, const IImage& after, SEntry& entry)
{
    const size_t nTexels = GetTexelCount(before);
    const uint8_t* pBefore = before.GetRawData();
    const uint8_t* pAfter = after.GetRawData();
    // Images that cannot be compared leave an entry without changes, which fits no image.
    if (before.GetFormat() != after.GetFormat() || before.GetBitsPerPixel() != BITS ||
        nTexels != GetTexelCount(after) || pBefore == nullptr || pAfter == nullptr)
    {
        return;
    }
    entry.nTexels = nTexels;
    std::vector<uint32_t> blocks; // first texels of those that differ
    size_t nChanges = 0;
    for (size_t nFirst = 0; nFirst < nTexels; nFirst += BLOCK_TEXELS)
    {
        const size_t nCount = std::min(BLOCK_TEXELS, nTexels - nFirst);
        const uint8_t* pOld = pBefore + nFirst * PAINT_TEXEL_BYTES;
        const uint8_t* pNew = pAfter + nFirst * PAINT_TEXEL_BYTES;
        const size_t nDifferent = CVectorLoop<CountDifferent>::Run(pOld, pNew, nCount);
        if (nDifferent != 0)
        {
            blocks.push_back(static_cast<uint32_t>(nFirst));
            nChanges += nDifferent;
        }
    }
    entry.changes.reserve(nChanges); // growing step by step would cost more than the search
    for (const uint32_t uFirst : blocks)
    {
        const auto uEnd = static_cast<uint32_t>(std::min(uFirst + BLOCK_TEXELS, nTexels));
        for (uint32_t i = uFirst; i < uEnd; ++i)
        {
            const uint32_t uOld = GetTexel(pBefore, i);
            const uint32_t uNew = GetTexel(pAfter, i);
            if (uOld != uNew)
            {
                entry.changes.push_back({i, uOld, uNew});
            }
        }
    }
}

void CTellur2DDrawUndoManager::Clear()
{
    m_Entries.clear();
    m_Position = 0;
}

bool CTellur2DDrawUndoManager::Fits(const SEntry& entry, const IImage* pImage)
{
    return pImage != nullptr && pImage->GetRawData() != nullptr &&
           pImage->GetBitsPerPixel() == BITS && GetTexelCount(*pImage) >= entry.nTexels &&
           !entry.changes.empty();
}

bool CTellur2DDrawUndoManager::Undo(IImage* pImage)
{
    if (m_Position == 0)
    {
        return false;
    }
    const SEntry& entry = *m_Entries[--m_Position];
    if (!Fits(entry, pImage))
    {
        return false;
    }
    for (const SChange& change : entry.changes)
    {
        std::memcpy(pImage->GetRawData() + change.uIndex * PAINT_TEXEL_BYTES,
                    &change.uOld,
                    PAINT_TEXEL_BYTES);
    }
    return true;
}

bool CTellur2DDrawUndoManager::Redo(IImage* pImage)
{
    if (m_Position == GetCount())
    {
        return false;
    }
    const SEntry& entry = *m_Entries[m_Position++];
    if (!Fits(entry, pImage))
    {
        return false;
    }
    for (const SChange& change : entry.changes)
    {
        std::memcpy(pImage->GetRawData() + change.uIndex * PAINT_TEXEL_BYTES,
                    &change.uNew,
                    PAINT_TEXEL_BYTES);
    }
    return true;
}

// The position is only cut to the new size: entries that could be redone may count as undoable
// afterwards, on purpose.
void CTellur2DDrawUndoManager::SetStackSize(uint32_t uSize)
{
    if (uSize < m_Capacity)
    {
        m_Position = std::min(m_Position, uSize);
        if (GetCount() > uSize)
        {
            m_Entries.erase(m_Entries.begin(),
                            m_Entries.begin() + static_cast<std::ptrdiff_t>(GetCount() - uSize));
        }
    }
    m_Capacity = uSize;
}
