#pragma once

#include <cstddef>
#include <new>

// A checker of memory sees each node by itself.
#if defined(__SANITIZE_ADDRESS__)
#define TCPARSE_PLAIN_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer)
#define TCPARSE_PLAIN_MEMORY 1
#endif
#endif

// Memory of parse trees. A file makes many small nodes and their owner deletes the whole tree, so a
// chunk is filled from its start and goes away with its last live piece: no free lists, and nodes
// lie in memory in the order of the file. Each library that contains the parser has a pool of its
// own; a node comes back to the right one because its virtual destructor belongs to the code that
// made it. Not guarded: nodes are made and deleted on the UI thread.
class CTCParsePool
{
public:
    // Never null. Aligned for pointers and 64-bit numbers. Give it back with Free.
    static void* Allocate(size_t nBytes)
    {
#ifdef TCPARSE_PLAIN_MEMORY
        return ::operator new(nBytes);
#else
        const size_t nRounded = (nBytes + ALIGNMENT - 1) & ~(ALIGNMENT - 1);
        if (nRounded > s_nRoom)
        {
            return AllocateInNewChunk(nRounded);
        }
        char* pPiece = s_pCursor;
        s_pCursor += nRounded;
        s_nRoom -= nRounded;
        ++s_pCurrent->nLive;
        return pPiece;
#endif
    }

    // pPiece: from Allocate, or null.
    static void Free(void* pPiece);

private:
    struct SChunk
    {
        size_t nLive;       // pieces given out and not back yet
        bool bOversized;    // made for one large piece
        SChunk* pNextSpare; // while it is spare
    };

    static constexpr size_t ALIGNMENT = 8;

    // A chunk is aligned to its size, so the address of a piece tells where its chunk starts.
    static constexpr size_t CHUNK_BYTES = size_t{64} * 1024;

    // Larger pieces get a chunk of their own instead of leaving the current one half empty.
    static constexpr size_t LARGE_PIECE_BYTES = CHUNK_BYTES / 4;

    // Empty chunks kept for the next file.
    static constexpr size_t MOST_SPARE_CHUNKS = 64;

    static void* AllocateInNewChunk(size_t nBytes);
    static void Release(SChunk* pChunk);
    static void StartFilling(SChunk* pChunk);

    static SChunk* s_pCurrent; // null before the first piece
    static char* s_pCursor;
    static size_t s_nRoom;
    static SChunk* s_pSpare;
    static size_t s_nSpare;
};
