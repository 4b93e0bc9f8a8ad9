// The headers of host/ say of every operation what whoever calls or writes it must know.

#include "tests/project/ProjectTree.h"

#include <gtest/gtest.h>

#include <regex>

namespace
{

struct SOperation
{
    size_t nLine = 0;
    bool bCommented = false; // behind it, above it, or above the unbroken lines that it stands in
};

// Virtual functions but for destructors, and free functions.
std::vector<SOperation> FindOperations(const std::string& strText)
{
    static const std::regex s_Operation(
        R"(^(    virtual [^~]*$|(?!#|using|class|struct|enum)\S.*\())");
    const std::vector<std::string> lines = SplitLines(strText);
    const std::vector<std::string> code = SplitLines(StripCode(strText));
    std::vector<SOperation> operations;
    bool bAbove = false;
    for (size_t i = 0; i < code.size(); ++i)
    {
        const std::string strCode = Trim(code[i]);
        const bool bOpens =
            strCode == "{" || strCode.ends_with(":"); // what is above is the class's
        bAbove = strCode.empty() ? !Trim(lines[i]).empty() : bAbove && !bOpens;
        if (!std::regex_search(code[i], s_Operation))
        {
            continue;
        }
        operations.push_back({i + 1, bAbove});
        bool bEnds = false;
        for (size_t iLine = i; iLine < code.size() && !bEnds; ++iLine)
        {
            const size_t iBehind = code[iLine].find_last_not_of(' ') + 1;
            operations.back().bCommented |= lines[iLine].find("//", iBehind) != std::string::npos;
            bEnds = code[iLine].find_first_of(";{") != std::string::npos;
        }
    }
    return operations;
}

} // namespace

TEST(HostHeaders, CommentEveryOperationAndStandInTheGuide)
{
    const std::string strGuide = ReadFile("docs/host-interface.md");
    size_t nOperations = 0;
    for (const std::string& strFile : ListFiles({"host"}, {".h"}))
    {
        const std::string strName = "`" + strFile.substr(strFile.find('/') + 1) + "`";
        EXPECT_NE(strGuide.find(strName), std::string::npos) << strName;
        for (const SOperation& operation : FindOperations(ReadFile(strFile)))
        {
            ++nOperations;
            EXPECT_TRUE(operation.bCommented) << strFile << ":" << operation.nLine;
        }
    }
    EXPECT_GT(nOperations, 250U) << "they are not found";
}

TEST(HostHeaders, AreReadAsTheyAreWritten)
{
    const std::string strText =
        "// A class.\nclass I\n{\npublic:\n    virtual void Bare() = 0;\n"
        "    virtual ~I() = default;\n    // A group.\n"
        "    virtual void First() = 0;\n    virtual int\n"
        "    Second(int) = 0;\n\n    virtual void\n    Third() = 0; // said\n"
        "\n    virtual void Last() = 0;\n};\n\nint Free();\n";
    std::string strFound;
    for (const SOperation& operation : FindOperations(strText))
    {
        strFound += std::to_string(operation.nLine) + (operation.bCommented ? "+ " : "- ");
    }
    EXPECT_EQ(strFound, "5- 8+ 9+ 12+ 15- 18- ");
}
