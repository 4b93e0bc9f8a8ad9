#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

// The texts that stand for the English ones, out of a file of pairs of lines: the English and,
// below it, the other. Owned by the program, longer than any window.
class CTextCatalogue
{
public:
    // Takes in what the file has. A pair that is damaged is left out, with one logged line that
    // names file and line. False, with one logged line, when the file cannot be read at all.
    bool Read(const std::string& strFile);

    // Borrowed from the catalogue; null when it has no such text.
    const char* Find(std::string_view strEnglish) const;

    size_t GetCount() const { return m_Texts.size(); }

private:
    struct SHash
    {
        using is_transparent = void; // so that a lookup makes no string

        size_t operator()(std::string_view strText) const
        {
            return std::hash<std::string_view>()(strText);
        }
    };

    std::unordered_map<std::string, std::string, SHash, std::equal_to<>> m_Texts; // by the English
};

// The file of a language, "data/texts/de.texts"; empty for what is no name of a language: letters,
// digits, '-' and '_'.
std::string GetCatalogueFile(const std::string& strLanguage);
