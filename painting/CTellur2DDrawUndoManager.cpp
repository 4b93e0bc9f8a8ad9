#include "painting/CTellur2DDrawUndoManager.h"

#include "host/Image.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr uint32_t BITS = 32; // of a texel
constexpr size_t BYTES = 4;
// Texels that are compared at one go. Most of a bitmap is the same after a stroke, and equal memory
// is found at the speed of reading it.
constexpr size_t BLOCK_TEXELS = 1024;

size_t GetTexelCount(const IImage& image)
{
    return size_t{image.GetWidth()} * image.GetHeight();
}

uint32_t GetTexel(const uint8_t* pTexels, size_t nIndex)
{
    uint32_t uTexel = 0;
    std::memcpy(&uTexel, pTexels + nIndex * BYTES, BYTES);
    return uTexel;
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
    if (before.GetFormat() != after.GetFormat() || before.GetBitsPerPixel() != BITS ||
        nTexels != GetTexelCount(after) || pBefore == nullptr || pAfter == nullptr)
    {
        return;
    }
    entry.nTexels = nTexels;
    for (size_t nFirst = 0; nFirst < nTexels; nFirst += BLOCK_TEXELS)
    {
        const size_t nEnd = std::min(nFirst + BLOCK_TEXELS, nTexels);
        if (std::memcmp(
                pBefore + nFirst * BYTES, pAfter + nFirst * BYTES, (nEnd - nFirst) * BYTES) == 0)
        {
            continue;
        }
        for (size_t i = nFirst; i < nEnd; ++i)
        {
            const uint32_t uOld = GetTexel(pBefore, i);
            const uint32_t uNew = GetTexel(pAfter, i);
            if (uOld != uNew)
            {
                entry.changes.push_back({static_cast<uint32_t>(i), uOld, uNew});
            }
        }
    }
    entry.changes.shrink_to_fit();
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
        std::memcpy(pImage->GetRawData() + change.uIndex * BYTES, &change.uOld, BYTES);
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
        std::memcpy(pImage->GetRawData() + change.uIndex * BYTES, &change.uNew, BYTES);
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
