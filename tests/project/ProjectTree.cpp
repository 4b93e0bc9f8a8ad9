#include "tests/project/ProjectTree.h"

#include "tests/support/TestPaths.h"

#include <sys/wait.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace stdfs = std::filesystem;

namespace
{

const stdfs::path ROOT = TELLUR_SOURCE_DIR;

bool HasExtension(const stdfs::path& path, const std::vector<std::string>& extensions)
{
    return extensions.empty() ||
           std::find(extensions.begin(), extensions.end(), path.extension().string()) !=
               extensions.end();
}

// The names between the colons.
std::vector<std::string> SplitFolders(const char* pszFolders)
{
    std::vector<std::string> folders;
    std::istringstream stream(pszFolders);
    for (std::string strFolder; std::getline(stream, strFolder, ':');)
    {
        folders.push_back(strFolder);
    }
    return folders;
}

} // namespace

const std::vector<std::string>& GetProductFolders()
{
    static const std::vector<std::string> s_Folders = SplitFolders(TELLUR_PRODUCT_FOLDERS);
    return s_Folders;
}

const std::vector<std::string>& GetPluginFolders()
{
    static const std::vector<std::string> s_Folders = SplitFolders(TELLUR_PLUGIN_FOLDERS);
    return s_Folders;
}

std::vector<std::string> ListFolders()
{
    std::vector<std::string> folders;
    for (const auto& entry : stdfs::directory_iterator(ROOT))
    {
        const std::string strName = entry.path().filename().string();
        if (entry.is_directory() && !strName.starts_with('.') && strName != "build")
        {
            folders.push_back(strName);
        }
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

std::vector<std::string> ListFiles(const std::vector<std::string>& folders,
                                   const std::vector<std::string>& extensions)
{
    std::vector<std::string> files;
    for (const std::string& strFolder : folders)
    {
        std::error_code fault;
        const stdfs::path folder = ROOT / strFolder;
        if (stdfs::is_regular_file(folder, fault))
        {
            files.push_back(strFolder);
            continue;
        }
        EXPECT_TRUE(stdfs::is_directory(folder, fault)) << strFolder;
        for (const auto& entry : stdfs::recursive_directory_iterator(folder, fault))
        {
            if (entry.is_regular_file() && HasExtension(entry.path(), extensions))
            {
                files.push_back(entry.path().lexically_relative(ROOT).generic_string());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> ListDocuments()
{
    return ListFiles({"README.md", "CONTRIBUTING.md", "THIRD-PARTY.md", "docs"}, {".md"});
}

bool ExistsInTree(const std::string& strPath)
{
    std::error_code fault;
    return stdfs::exists(ROOT / strPath, fault);
}

std::string ReadFile(const std::string& strPath)
{
    std::ifstream stream(ROOT / strPath, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << strPath;
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<std::string> ReadLines(const std::string& strPath)
{
    return SplitLines(ReadFile(strPath));
}

std::vector<std::string> SplitLines(const std::string& strText)
{
    std::vector<std::string> lines;
    std::istringstream stream(strText);
    for (std::string strLine; std::getline(stream, strLine);)
    {
        lines.push_back(strLine);
    }
    return lines;
}

std::vector<std::string> SplitWords(const std::string& strText)
{
    std::istringstream stream(strText);
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

std::vector<std::string> FindAll(const std::string& strText, const std::regex& pattern)
{
    std::vector<std::string> found;
    for (std::sregex_iterator it(strText.begin(), strText.end(), pattern), end; it != end; ++it)
    {
        found.push_back(it->str());
    }
    return found;
}

std::string Trim(const std::string& strText)
{
    const size_t iFirst = strText.find_first_not_of(" \t\r\n");
    const size_t iLast = strText.find_last_not_of(" \t\r\n");
    return iFirst == std::string::npos ? "" : strText.substr(iFirst, iLast - iFirst + 1);
}

std::string StripCode(const std::string& strCode)
{
    std::string strStripped = strCode;
    size_t i = 0;
    const auto blank = [&](size_t iEnd)
    {
        for (iEnd = std::min(iEnd, strCode.size()); i < iEnd; ++i)
        {
            strStripped[i] = strCode[i] == '\n' ? '\n' : ' ';
        }
    };
    const auto endOf = [&](const std::string& strMark, size_t iFrom)
    {
        const size_t iMark = strCode.find(strMark, iFrom);
        return iMark == std::string::npos ? strCode.size() : iMark + strMark.size();
    };
    while (i < strCode.size())
    {
        const bool bDigitBefore = i > 0 && std::isdigit(static_cast<unsigned char>(strCode[i - 1]));
        if (strCode.compare(i, 2, "//") == 0)
        {
            blank(strCode.find('\n', i));
        }
        else if (strCode.compare(i, 2, "/*") == 0)
        {
            blank(endOf("*/", i + 2));
        }
        else if (strCode.compare(i, 3, "R\"(") == 0)
        {
            blank(endOf(")\"", i));
        }
        else if (strCode[i] == '"' || (strCode[i] == '\'' && !bDigitBefore)) // 1'000 is a number
        {
            size_t iEnd = i + 1;
            while (iEnd < strCode.size() && strCode[iEnd] != strCode[i])
            {
                iEnd += strCode[iEnd] == '\\' ? 2 : 1;
            }
            blank(iEnd + 1);
        }
        else
        {
            ++i;
        }
    }
    return strStripped;
}

SRun RunCommand(const std::string& strCommand, const std::string& strFolder)
{
    const std::string strWhere = strFolder.empty() ? ROOT.string() : strFolder;
    const std::string strAll = "cd '" + strWhere +
                               "' && export PATH='" TELLUR_BIN_DIR "':$PATH && { " + strCommand +
                               "\n} 2>&1";
    SRun run;
    FILE* pPipe = ::popen(strAll.c_str(), "r");
    if (pPipe == nullptr)
    {
        ADD_FAILURE() << "cannot run " << strCommand;
        return run;
    }
    char szPiece[4096];
    for (size_t n = 0; (n = std::fread(szPiece, 1, sizeof(szPiece), pPipe)) > 0;)
    {
        run.strOutput.append(szPiece, n);
    }
    const int nStatus = ::pclose(pPipe);
    run.nExitCode = WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
    return run;
}

std::vector<std::string> ListPrograms()
{
    std::vector<std::string> programs;
    for (const auto& entry : stdfs::directory_iterator(TELLUR_BIN_DIR))
    {
        const std::string strName = entry.path().filename().string();
        if (strName.starts_with("tellur-") && entry.is_regular_file())
        {
            programs.push_back(strName);
        }
    }
    EXPECT_FALSE(programs.empty());
    std::sort(programs.begin(), programs.end());
    return programs;
}
