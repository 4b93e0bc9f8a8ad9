#pragma once

#include "host/Export.h"
#include "parser/CTCParseNameList.h"
#include "parser/CTCParseNodes.h"
#include "parser/STCParseCallbacks.h"
#include "parser/STCParseOutline.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Reads one file into a tree of nodes. Made for a file, used once, destroyed; the tree outlives it.
// An included file gets an object of its own, which lives within the call that includes it.
//
// Every reader takes the error flag that the whole parse shares. A reader that fails sets it to
// something other than 0 and returns null, and all callers unwind at once. Some messages leave the
// flag alone on purpose, so that old files keep loading: a stray ';', names of unknown constants,
// unknown variables of type float, vec3 and vec4, and a string of `include` that cannot be read.
class CTCParse
{
public:
    // Deeper files are refused with an error: far beyond what people write, and what keeps a file
    // that includes itself or an endless row of '{' from eating all memory.
    static constexpr size_t BLOCK_DEPTH_LIMIT = 1'000'000;
    static constexpr size_t INCLUDE_DEPTH_LIMIT = 64;
    static constexpr size_t INCLUDE_COUNT_LIMIT = 10'000; // in all, against files that multiply

    // Loads the file. pszPath: as messages show it. bDebug: includes are logged.
    CTCParse(const char* pszPath, bool bDebug);
    CTCParse(const CTCParse&) = delete;
    CTCParse& operator=(const CTCParse&) = delete;

    // Reports a message with the file, the line and the line's text, first to the files that
    // include this one, outermost first. Does not touch the error flag. The message is cut at
    // 8191 bytes.
    virtual void Error(const char* pszFormat, ...) TELLUR_PRINTF(2, 3);

    virtual ~CTCParse();

    void SetCallbacks(const STCParseCallbacks& callbacks) { m_Callbacks = callbacks; }

    // Parse says there where everything stands. pOutline: borrowed, empty; null: not asked for.
    void SetOutline(STCParseOutline* pOutline) { m_pOutline = pOutline; }

    // False when the file could not be read; it then parses as an empty one.
    bool IsLoaded() const { return m_bLoaded; }

    // Reads the whole file; once. Returns the first node, owned by the caller, also when *pError
    // is not 0 afterwards: what was read before the error.
    CTCPARSE_KEYWORD* Parse(int32_t* pError);

    // Spent in Parse by all parsers of the process.
    static double GetTotalSeconds();

private:
    using NameBuffer = char[CTCPARSE_KEYWORD::NAME_BYTES];

    // What a file shares with the files it includes.
    struct SVocabulary
    {
        CTCParseNameList declarations;
        size_t nIncludes = 0;
    };

    // What a statement list is read into.
    struct SPlace
    {
        CTCPARSE_KEYWORD** ppLink;              // takes the next node
        std::vector<CTCPARSE_KEYWORD**> around; // where the blocks around this one go on
    };

    struct SVectorKind;

    // Characters. -1 is the end of the text; pushing it back does nothing.
    int GetChar() { return m_pCursor != m_pEnd ? static_cast<unsigned char>(*m_pCursor++) : -1; }

    void UngetChar(int nChar) { m_pCursor -= nChar >= 0 ? 1 : 0; }

    bool SkipSpace(); // also comments; true at the end of the text
    bool SkipComment();
    int NextChar(); // SkipSpace, then GetChar

    // 0, or what failed: 1 the word is too long (reported), -1 it runs into the end of the text.
    // The buffer holds what was read, zero behind it.
    int ReadWord(NameBuffer& szWord);
    static void MakeLower(NameBuffer& szWord);

    // Values. Null when the flag is set; the vector readers also for an unknown constant.
    CTCPARSE_PARAM* ReadValue(ETCParseType eType, int32_t* pError);
    CTCPARSE_INT* ReadInt(int32_t* pError);
    CTCPARSE_FLOAT* ReadFloat(int32_t* pError);
    CTCPARSE_STRING* ReadString(int32_t* pError);
    CTCPARSE_VEC3* ReadVec3(int32_t* pError);
    CTCPARSE_VEC4* ReadVec4(int32_t* pError);

    bool StartsNumber(int nChar);
    bool ReadIntDigits(bool bNegative, int32_t* pValue, int32_t* pError);
    bool ReadFloatDigits(bool bNegative, float* pValue, int32_t* pError);
    bool CheckNumber(const char* pStart, const char* pszBadEnd, int32_t* pError);
    CTCPARSE_STRING* ReadQuoted(int32_t* pError);
    CTCPARSE_STRING* ReadEscaped(int32_t* pError);
    template <class TVector>
    TVector*
    ReadVector(const SVectorKind& kind, bool (*pCallback)(float*, const char*), int32_t* pError);
    bool ReadComponents(const SVectorKind& kind, float* pValues, int32_t* pError);

    // The name behind a '%'. False, with the flag set, when it cannot be read or nobody answers.
    bool ReadVariable(bool bHasCallback, NameBuffer& szName, int32_t* pError);

    // A constant's name and its value of the type asked for. Null with the flag set, or null
    // without when there is no such constant; szName is then what was read.
    const CTCPARSE_PARAM* ReadConst(ETCParseType eType, NameBuffer& szName, int32_t* pError);
    bool WarnUnknownConst(const NameBuffer& szName, int32_t nError);

    // Statements. ReadBlock returns what it read also when it failed.
    CTCPARSE_KEYWORD* ReadBlock(SVocabulary& vocabulary, int32_t* pError);
    void ReadAfterCall(SPlace& place, int32_t* pError);
    void CloseBlock(SPlace& place, int32_t* pError);
    CTCPARSE_KEYWORD* ReadCall(const SVocabulary& vocabulary, int32_t* pError);
    bool
    ReadArguments(const CTCPARSE_KEYWORD& declaration, CTCPARSE_KEYWORD& call, int32_t* pError);
    void NoteCall(const CTCPARSE_KEYWORD* pCall, const SPlace& place);

    size_t GetPosition() const { return static_cast<size_t>(m_pCursor - m_Text.get()); }

    // Behind a '!'. *ppNodes receives the nodes of an included file.
    void ReadDeclaration(SVocabulary& vocabulary, int32_t* pError, CTCPARSE_KEYWORD** ppNodes);
    void ReadConstDef(int32_t* pError); // behind a '$'
    bool ReadType(int nChar, ETCParseType* pType);
    bool ReadTypes(CTCPARSE_KEYWORD& declaration, int32_t* pError);

    // The name of the file to include, owned by the caller; null when there is none to include.
    CTCPARSE_STRING* ReadInclude(bool bOpened, int32_t* pError);
    CTCPARSE_STRING* ReadIncludeName(int32_t* pError);
    template <class TValue>
    CTCPARSE_STRING* ReadIncludeIf(bool bOpened,
                                   const char* pszDirective,
                                   TValue* (CTCParse::*pReadValue)(int32_t*),
                                   int32_t* pError);
    int ReadOperator();
    CTCPARSE_KEYWORD*
    Include(const CTCPARSE_STRING& fileName, SVocabulary& vocabulary, int32_t* pError);

    // Errors.
    void Fail(int32_t* pError, const char* pszMessage); // Error, and sets the flag
    int GetLine();

    bool Load();

    bool m_bDebug;
    bool m_bLoaded = false;
    std::string m_strDirectory; // rooted, with its separator at the end
    std::string m_strFileName;  // as it was passed

    std::unique_ptr<char[]> m_Text; // zeros behind the text let scans run without a bound
    const char* m_pEnd = nullptr;
    const char* m_pCursor = nullptr;
    std::unique_ptr<char[]>
        m_Scratch; // as long as the text, made for the first string with escapes

    // Lines are counted from call to call and to a message, each time from where it was known last.
    const char* m_pCounted = nullptr;
    ptrdiff_t m_nCountedLine = 1;

    CTCParse* m_pErrorListener = nullptr; // the including parser
    size_t m_nIncludeDepth = 0;
    CTCParseNameList m_Constants;
    STCParseCallbacks m_Callbacks;
    STCParseOutline* m_pOutline = nullptr;
    std::vector<STCParseOutline::SSpan> m_Arguments; // of the call that was read last
    bool m_bOpenComment = false;                     // the end of the text ends it
    bool m_bCutInclude = false; // so does it a directive, whose name could not be read
};
