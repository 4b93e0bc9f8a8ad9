#pragma once

#include "parser/STCParseOutline.h"
#include "parser/TCParseFile.h"

#include <memory>
#include <string>
#include <vector>

// A file of keyword calls that a program reads, and later writes with other values. Only values
// that differ change their bytes: keywords that the program does not know, comments, order and line
// ends stay as a person has written them. UI thread only.
class CTCParseText
{
public:
    struct SValue
    {
        ETCParseType eType;
        std::string strText; // as it is written: quoted, with brackets
    };

    // What the last call of that name should say.
    struct SCall
    {
        const char* pszName; // lower case
        std::vector<SValue> values;

        std::string GetText() const; // one line, without its end
    };

    // Reads the file as TCParseFile does; a value that names a variable is an error. May be called
    // once.
    ETCParseStatus Read(const char* pszPath);

    // The tree, owned by this; null when nothing was read.
    const CTCPARSE_KEYWORD* GetFirst() const { return m_Tree.get(); }

    // The last call of that name outside of blocks, which counts for readers that take one value;
    // null when there is none. It may stand in an included file.
    const CTCPARSE_KEYWORD* FindLast(const char* pszName) const;

    // The text with these calls, as it goes to strPath (absolute): names of included files count
    // from there. What cannot be changed where it stands, because an included file says it or
    // nobody yet, is added at the end.
    std::string Update(const std::vector<SCall>& calls, const std::string& strPath) const;

private:
    struct SEdit
    {
        STCParseOutline::SSpan span;
        std::string strText;
    };

    bool Change(const SCall& call, std::vector<SEdit>& edits) const;
    void MoveIncludes(const std::string& strPath, std::vector<SEdit>& edits) const;
    bool IsDeclared(const SCall& call) const;
    std::string MakeAddition(const std::vector<const SCall*>& calls) const;

    std::string m_Path; // absolute
    std::unique_ptr<CTCPARSE_KEYWORD> m_Tree;
    STCParseOutline m_Outline;
};
