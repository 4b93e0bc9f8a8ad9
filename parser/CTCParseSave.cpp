#include "host/Log.h"
#include "parser/CTCParseNodes.h"

#include <bit>
#include <cstring>
#include <vector>

// The binary form of a tree: 32-bit little-endian numbers and bytes.
static constexpr uint32_t TAG_NODE = 16;
static constexpr uint32_t TAG_BLOCK = 32;
static constexpr uint32_t TAG_END_OF_CHAIN = 0xFFFFFFFFU;

static void Put(FILE* pFile, uint32_t uValue)
{
    for (int i = 0; i < 4; ++i)
    {
        fputc(static_cast<int>(uValue >> (8 * i)) & 0xFF, pFile);
    }
}

static void Put(FILE* pFile, float fValue)
{
    Put(pFile, std::bit_cast<uint32_t>(fValue));
}

static void Put(FILE* pFile, const char* pszText)
{
    const size_t nLength = pszText != nullptr ? strlen(pszText) : 0;
    Put(pFile, static_cast<uint32_t>(nLength));
    fwrite(pszText != nullptr ? pszText : "", 1, nLength, pFile);
}

static void PutParam(FILE* pFile, const CTCPARSE_PARAM& param)
{
    Put(pFile, static_cast<uint32_t>(param.type));
    if (const auto* pInt = dynamic_cast<const CTCPARSE_INT*>(&param))
    {
        Put(pFile, static_cast<uint32_t>(pInt->value));
    }
    else if (const auto* pFloat = dynamic_cast<const CTCPARSE_FLOAT*>(&param))
    {
        Put(pFile, pFloat->value);
    }
    else if (const auto* pString = dynamic_cast<const CTCPARSE_STRING*>(&param))
    {
        Put(pFile, pString->value);
    }
    else if (const auto* pVec3 = dynamic_cast<const CTCPARSE_VEC3*>(&param))
    {
        for (const float fPart : {pVec3->x, pVec3->y, pVec3->z})
        {
            Put(pFile, fPart);
        }
    }
    else if (const auto* pVec4 = dynamic_cast<const CTCPARSE_VEC4*>(&param))
    {
        for (const float fPart : {pVec4->x, pVec4->y, pVec4->z, pVec4->w})
        {
            Put(pFile, fPart);
        }
    }
    Put(pFile, param.refName);
}

bool CTCPARSE_KEYWORD::Save(FILE* pFile) const
{
    // A node's block comes before its siblings. Each chain ends with its tag, and the walk then
    // goes on behind the node around it.
    std::vector<const CTCPARSE_KEYWORD*> around; // nodes whose block is being written
    const CTCPARSE_KEYWORD* pNode = this;
    while (pNode != nullptr)
    {
        Put(pFile, TAG_NODE);
        Put(pFile, pNode->name);
        for (const CTCPARSE_PARAM* pParam = pNode->params; pParam != nullptr; pParam = pParam->next)
        {
            PutParam(pFile, *pParam);
        }
        if (pNode->block != nullptr)
        {
            Put(pFile, TAG_BLOCK);
            around.push_back(pNode);
            pNode = pNode->block;
            continue;
        }
        pNode = pNode->next;
        while (pNode == nullptr)
        {
            Put(pFile, TAG_END_OF_CHAIN);
            if (around.empty())
            {
                break;
            }
            pNode = around.back()->next;
            around.pop_back();
        }
    }
    // Single writes are not checked: the stream keeps its error, and flushing tells of the rest.
    if (fflush(pFile) != 0 || ferror(pFile) != 0)
    {
        CrashLog("[CTCPARSE_KEYWORD::Save] the tree could not be written\n");
        return false;
    }
    return true;
}
