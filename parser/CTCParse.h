#pragma once

#include "parser/CTCParseCalls.h"
#include "parser/CTCParseConstants.h"
#include "parser/CTCParseDirectives.h"
#include "parser/CTCParseNameList.h"
#include "parser/CTCParseReader.h"
#include "parser/CTCParseTree.h"
#include "parser/CTCParseValues.h"
#include "parser/CTCParseVariables.h"
#include "parser/ITCParseErrors.h"
#include "parser/STCParseOutline.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Reads one file into a tree of nodes. Made for a file, used once, destroyed; the tree outlives it.
// An included file gets an object of its own, which lives within the call that includes it.
//
// Every reader takes the error flag that the whole parse shares. A reader that fails sets it to
// something other than 0 and returns null, and all callers unwind at once. Some messages leave the
// flag alone on purpose, so that old files keep loading: a stray ';', names of unknown constants,
// unknown variables of type float, vec3 and vec4, and a string of `include` that cannot be read.
class CTCParse : public ITCParseErrors
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
    void Error(const char* pszFormat, ...) override TELLUR_PRINTF(2, 3);

    ~CTCParse() override;

    void SetCallbacks(const STCParseCallbacks& callbacks) { m_Variables.SetCallbacks(callbacks); }

    // Parse says there where everything stands. pOutline: borrowed, empty; null: not asked for.
    void SetOutline(STCParseOutline* pOutline) { m_pOutline = pOutline; }

    // False when the file could not be read; it then parses as an empty one.
    bool IsLoaded() const { return m_bLoaded; }

    // Reads the whole file; may be called once. Returns the first node, which the caller owns, or
    // null for a file without calls. When *pError is not 0 afterwards, the tree holds what was read
    // before the error.
    CTCPARSE_KEYWORD* Parse(int32_t* pError);

    // The seconds that all parsers of the process have spent in Parse.
    static double GetTotalSeconds();

private:
    // What a file shares with the files it includes.
    struct SVocabulary
    {
        CTCParseNameList declarations;
        size_t nIncludes = 0;
    };

    // Reads statements up to the end of the text. Returns what was read also when that failed.
    CTCPARSE_KEYWORD* ReadBlock(SVocabulary& vocabulary, int32_t* pError);
    void ReadCall(const CTCParseNameList& declarations, CTCParseTree& tree, int32_t* pError);
    void ReadAfterCall(CTCPARSE_KEYWORD& call, CTCParseTree& tree, int32_t* pError);

    // Reads another file at this place and returns its nodes.
    CTCPARSE_KEYWORD*
    Include(const CTCPARSE_STRING& fileName, SVocabulary& vocabulary, int32_t* pError);

    // Tells the outline where statements can be added. iStart: where the last statement begins.
    void NoteEnd(size_t iStart, size_t nOpenBlocks);

    bool m_bDebug;
    std::string m_strFileName;  // as it was passed
    std::string m_strDirectory; // rooted, with its separator at the end
    CTCParseReader m_Reader;
    bool m_bLoaded;

    CTCParseConstants m_Constants;
    CTCParseVariables m_Variables;
    CTCParseValues m_Values;
    CTCParseDirectives m_Directives;
    CTCParseCalls m_Calls;

    CTCParse* m_pErrorListener = nullptr; // the including parser
    size_t m_nIncludeDepth = 0;
    STCParseOutline* m_pOutline = nullptr;
    std::vector<STCParseOutline::SSpan> m_Arguments; // of the call that was read last, if asked for
};
