#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// A fresh, empty folder, removed with all it holds at the end.
class CTempFolder
{
public:
    CTempFolder()
    {
        std::string strTemplate =
            (std::filesystem::temp_directory_path() / "tellur-XXXXXX").string();
        if (::mkdtemp(strTemplate.data()) == nullptr)
        {
            ADD_FAILURE() << "no temporary folder: " << strTemplate;
        }
        m_Folder = strTemplate;
    }

    ~CTempFolder()
    {
        std::error_code fault;
        std::filesystem::remove_all(m_Folder, fault);
    }

    CTempFolder(const CTempFolder&) = delete;
    CTempFolder& operator=(const CTempFolder&) = delete;

    const std::string& GetFolder() const { return m_Folder; }

    std::string Path(const char* pszName) const { return m_Folder + "/" + pszName; }

private:
    std::string m_Folder;
};

// Returns all bytes of a file. Fails the test and returns none when it cannot be read.
inline std::string ReadBytes(const std::string& strPath)
{
    std::ifstream stream(strPath, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << strPath;
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// Writes a file, making its folders.
inline void WriteBytes(const std::string& strPath, const std::string& strBytes)
{
    std::error_code fault;
    std::filesystem::create_directories(std::filesystem::path(strPath).parent_path(), fault);
    std::ofstream stream(strPath, std::ios::binary);
    stream.write(strBytes.data(), static_cast<std::streamsize>(strBytes.size()));
    stream.close();
    EXPECT_TRUE(stream.good()) << strPath;
}
