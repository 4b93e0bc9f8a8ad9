#pragma once

#include "parser/CTCParseNameList.h"

#include <cstddef>
#include <string>
#include <vector>

// Where the statements of one file stand in its text, for whoever writes the file again. Positions
// are bytes. Of the files that it includes nothing is in here but their names.
struct STCParseOutline
{
    struct SSpan
    {
        size_t iStart = 0;
        size_t iEnd = 0; // behind the last byte
    };

    struct SCall
    {
        const CTCPARSE_KEYWORD* pCall = nullptr; // the node of the tree
        std::vector<SSpan> arguments;            // as the declaration has them
    };

    struct SInclude
    {
        SSpan span; // of the name as it is written, a quoted text or a constant
        std::string strName;
    };

    std::string strText;
    std::vector<SCall> calls;       // outside of blocks, as they follow one another
    std::vector<SInclude> includes; // also those whose condition does not hold
    CTCParseNameList declarations;  // in force at the end of the text
    size_t iEnd = 0;                // where statements can be added; what is behind says nothing
    size_t nOpenBlocks = 0;         // there
    bool bOpenComment = false;      // there
};
