// Feeds the text parser with any bytes: the file is the input, and may include itself as
// "./900", the descriptor it is opened under.

#include "host/Log.h"
#include "parser/CTCParseText.h"
#include "parser/DeclarativeText.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace
{

constexpr int DESCRIPTOR = 900;
constexpr const char* PATH = "/proc/self/fd/900";

class CSilentSink : public ILogSink
{
public:
    void Write(const char* /*pszText*/) override {}
};

// Known when the name begins with a letter before 'n'.
bool IsKnown(const char* pszName)
{
    return pszName[0] < 'n';
}

bool FindInt(int32_t* pValue, const char* pszName)
{
    *pValue = 1;
    return IsKnown(pszName);
}

bool FindFloat(float* pValue, const char* pszName, const char* /*pszMember*/)
{
    *pValue = 0.5F;
    return IsKnown(pszName);
}

bool FindVector(float* pValues, const char* pszName)
{
    pValues[0] = 1.0F;
    pValues[2] = 2.0F;
    return IsKnown(pszName);
}

bool FindText(char* pBuffer, const char* pszName)
{
    for (size_t i = 0; i < TCPARSE_STRING_VARIABLE_BYTES; ++i)
    {
        pBuffer[i] = 'x';
    }
    return IsKnown(pszName);
}

void Fail(const char* pszWhat)
{
    fprintf(stderr, "parser_fuzz: %s\n", pszWhat);
    abort();
}

void WriteInput(std::string_view text)
{
    if (ftruncate(DESCRIPTOR, 0) != 0 ||
        pwrite(DESCRIPTOR, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
    {
        Fail("the file in memory is not written");
    }
}

// Whatever else a file says, it is the same again, and takes other values that read back.
void CheckUpdate(std::string_view text)
{
    CTCParseText kept;
    if (kept.Read(PATH) != tcparse_done)
    {
        return;
    }
    if (kept.Update({}, PATH) != text)
    {
        Fail("a text changes without a reason");
    }
    if (text.find("include") != std::string_view::npos)
    {
        return; // of itself: what is added would be read more than once
    }
    const CTCParseText::SCall call = {"n", {{tcparse_string, "\"x\""}, {tcparse_int, "-7"}}};
    WriteInput(kept.Update({call}, PATH));
    CTCParseText updated;
    const bool bRead = updated.Read(PATH) == tcparse_done;
    const CTCPARSE_KEYWORD* pCall = bRead ? updated.FindLast("n") : nullptr;
    if (pCall == nullptr || pCall->params == nullptr || pCall->params->next == nullptr ||
        MakeValueText(*pCall->params) != "\"x\"" || MakeValueText(*pCall->params->next) != "-7")
    {
        Fail("a value that was written does not read back");
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*pArgumentCount*/, char*** /*pArguments*/)
{
    static CSilentSink s_Sink;
    SetLogSink(&s_Sink);
    const int nFile = memfd_create("parser_fuzz", 0);
    if (nFile < 0 || dup2(nFile, DESCRIPTOR) != DESCRIPTOR)
    {
        Fail("no file in memory");
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes)
{
    const std::string_view text(reinterpret_cast<const char*>(pBytes), nBytes);
    WriteInput(text);
    ETCParseStatus eStatus = tcparse_done;
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(
        TCParseFile(PATH, FindInt, FindFloat, FindVector, FindVector, FindText, &eStatus));
    if (eStatus == tcparse_unreadable || (eStatus == tcparse_failed && pTree != nullptr))
    {
        Fail("the status does not fit the tree");
    }
    if (pTree != nullptr)
    {
        const CTCPARSE_KEYWORD copy(*pTree);
        static FILE* const s_pNowhere = fopen("/dev/null", "wb");
        if (!copy.Save(s_pNowhere))
        {
            Fail("the tree is not saved");
        }
    }
    CheckUpdate(text);
    return 0;
}
