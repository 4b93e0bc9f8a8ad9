#include "editor/core/Words.h"

#include "editor/core/CTextCatalogue.h"

namespace
{

const CTextCatalogue* g_pCatalogue = nullptr;

} // namespace

const char* Words(const char* pszEnglish)
{
    const char* pszFound =
        g_pCatalogue != nullptr && pszEnglish != nullptr ? g_pCatalogue->Find(pszEnglish) : nullptr;
    return pszFound != nullptr ? pszFound : pszEnglish;
}

void SetCatalogue(const CTextCatalogue* pCatalogue)
{
    g_pCatalogue = pCatalogue;
}
