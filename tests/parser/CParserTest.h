#pragma once

#include "host/FileSystem.h"
#include "parser/TCParseFile.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>

// The second line of a file, what the file gives, and its messages in order, each with a line feed.
// Messages that end a parse are followed by "!".
struct SParserCase
{
    const char* pszLine;
    const char* pszTree;
    const char* pszMessages;
};

// Files in a folder of their own, parsed under relative names, and trees as one line of text.
class CParserTest : public ::testing::Test
{
protected:
    static constexpr const char* REFUSED = "Parser: cant parse file 't.txt'\n";

    struct SOutcome
    {
        std::string strTree;
        std::string strLog;
        ETCParseStatus eStatus = tcparse_done;
    };

    CParserTest() { fs::set_user_root(m_Folder.GetFolder().c_str()); }

    ~CParserTest() override { fs::set_user_root(nullptr); }

    void Write(const char* pszName, const std::string& strText)
    {
        WriteBytes(m_Folder.Path(pszName), strText);
    }

    SOutcome ParseFile(const char* pszName, const STCParseCallbacks& callbacks = {})
    {
        CLogCatcher log;
        SOutcome outcome;
        const std::unique_ptr<CTCPARSE_KEYWORD> pTree(TCParseFile(pszName,
                                                                  callbacks.pInt,
                                                                  callbacks.pFloat,
                                                                  callbacks.pVec3,
                                                                  callbacks.pVec4,
                                                                  callbacks.pString,
                                                                  &outcome.eStatus));
        outcome.strTree = Show(pTree.get());
        outcome.strLog = log.GetText();
        return outcome;
    }

    SOutcome Parse(const std::string& strText, const STCParseCallbacks& callbacks = {})
    {
        Write("t.txt", strText);
        return ParseFile("t.txt", callbacks);
    }

    // A message as the log shows it.
    static std::string Message(const std::string& strText,
                               const std::string& strFile,
                               int nLine,
                               const std::string& strLine)
    {
        std::ostringstream text;
        text << "[CTCParse] " << strText << ": in file '" << strFile << "' in line " << nLine
             << '\n'
             << strLine << '\n';
        return text.str();
    }

    // Compares tree, status and the whole log; all messages of a case belong to its line.
    void Check(const SParserCase& test, const std::string& strFirstLine)
    {
        SCOPED_TRACE(test.pszLine);
        std::string strMessages = test.pszMessages;
        const bool bFails = !strMessages.empty() && strMessages.back() == '!';
        std::istringstream messages(bFails ? strMessages.substr(0, strMessages.size() - 1)
                                           : strMessages);
        std::string strLog;
        for (std::string strMessage; std::getline(messages, strMessage);)
        {
            strLog += Message(strMessage, "t.txt", 2, test.pszLine);
        }
        strLog += bFails ? REFUSED : "";
        const SOutcome outcome = Parse(strFirstLine + '\n' + test.pszLine);
        EXPECT_EQ(outcome.strTree, test.pszTree);
        EXPECT_EQ(outcome.strLog, strLog);
        EXPECT_EQ(outcome.eStatus, bFails ? tcparse_failed : tcparse_done);
    }

    // "name(i1,f2.5,\"text\",[1 2 3]){nested()} sibling()", a variable's name behind its value.
    static std::string Show(const CTCPARSE_KEYWORD* pNode)
    {
        std::ostringstream text;
        for (; pNode != nullptr; pNode = pNode->next)
        {
            text << pNode->name << '(';
            for (const CTCPARSE_PARAM* p = pNode->params; p != nullptr; p = p->next)
            {
                text << ShowValue(*p) << (p->refName != nullptr ? "%" : "")
                     << (p->refName != nullptr ? p->refName : "")
                     << (p->next != nullptr ? "," : "");
                EXPECT_EQ(p->flag, 0);
            }
            text << ')';
            if (pNode->block != nullptr)
            {
                text << '{' << Show(pNode->block) << '}';
            }
            text << (pNode->next != nullptr ? " " : "");
        }
        return text.str();
    }

    CTempFolder m_Folder;

private:
    static std::string ShowValue(const CTCPARSE_PARAM& param)
    {
        char szText[128] = "?";
        switch (param.type)
        {
        case tcparse_int:
            return "i" + std::to_string(dynamic_cast<const CTCPARSE_INT&>(param).value);
        case tcparse_float:
            snprintf(
                szText, sizeof(szText), "f%.9g", dynamic_cast<const CTCPARSE_FLOAT&>(param).value);
            break;
        case tcparse_string:
            return '"' + std::string(dynamic_cast<const CTCPARSE_STRING&>(param).value) + '"';
        case tcparse_vec3:
        {
            const auto& v = dynamic_cast<const CTCPARSE_VEC3&>(param);
            snprintf(szText, sizeof(szText), "[%.9g %.9g %.9g]", v.x, v.y, v.z);
            break;
        }
        case tcparse_vec4:
        {
            const auto& v = dynamic_cast<const CTCPARSE_VEC4&>(param);
            snprintf(szText, sizeof(szText), "[%.9g %.9g %.9g %.9g]", v.x, v.y, v.z, v.w);
            break;
        }
        }
        return szText;
    }
};
