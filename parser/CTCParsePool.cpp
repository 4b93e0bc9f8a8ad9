#include "parser/CTCParsePool.h"

#include <cstdint>

CTCParsePool::SChunk* CTCParsePool::s_pCurrent = nullptr;
char* CTCParsePool::s_pCursor = nullptr;
size_t CTCParsePool::s_nRoom = 0;
CTCParsePool::SChunk* CTCParsePool::s_pSpare = nullptr;
size_t CTCParsePool::s_nSpare = 0;

void CTCParsePool::Free(void* pPiece)
{
#ifdef TCPARSE_PLAIN_MEMORY
    ::operator delete(pPiece);
#else
    if (pPiece == nullptr)
    {
        return;
    }
    auto* pBytes = static_cast<char*>(pPiece);
    const size_t nOffset = reinterpret_cast<uintptr_t>(pBytes) & (CHUNK_BYTES - 1);
    auto* pChunk = reinterpret_cast<SChunk*>(pBytes - nOffset);
    if (--pChunk->nLive == 0)
    {
        Release(pChunk);
    }
#endif
}

void* CTCParsePool::AllocateInNewChunk(size_t nBytes)
{
    // An oversized chunk starts at a multiple of CHUNK_BYTES as well, so Free finds its start too.
    const bool bOversized = nBytes > LARGE_PIECE_BYTES;
    SChunk* pChunk = s_pSpare;
    if (bOversized || pChunk == nullptr)
    {
        const size_t nChunkBytes = bOversized ? sizeof(SChunk) + nBytes : CHUNK_BYTES;
        void* pMemory = ::operator new (nChunkBytes, std::align_val_t{CHUNK_BYTES});
        pChunk = new (pMemory) SChunk{0, bOversized, nullptr};
    }
    else
    {
        s_pSpare = pChunk->pNextSpare;
        --s_nSpare;
    }
    if (bOversized)
    {
        pChunk->nLive = 1;
        return pChunk + 1;
    }
    // What was left of the chunk before is given up; its pieces still count there.
    StartFilling(pChunk);
    return Allocate(nBytes);
}

void CTCParsePool::Release(SChunk* pChunk)
{
    // The chunk that is being filled starts again from its front instead of becoming a spare one.
    if (pChunk == s_pCurrent)
    {
        StartFilling(pChunk);
    }
    else if (pChunk->bOversized || s_nSpare == MOST_SPARE_CHUNKS)
    {
        ::operator delete (pChunk, std::align_val_t{CHUNK_BYTES});
    }
    else
    {
        pChunk->pNextSpare = s_pSpare;
        s_pSpare = pChunk;
        ++s_nSpare;
    }
}

void CTCParsePool::StartFilling(SChunk* pChunk)
{
    s_pCurrent = pChunk;
    s_pCursor = reinterpret_cast<char*>(pChunk + 1);
    s_nRoom = CHUNK_BYTES - sizeof(SChunk);
}
