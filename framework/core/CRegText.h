#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The text of a registry file: sections "[key path]" with lines "name"=value below them. A change
// touches the bytes of its own value and no others, so comments, values of types that are not known
// here and unreadable lines stay as they are. Of several lines for one value the last one counts.
class CRegText
{
public:
    // One line "name"=value. Positions are bytes of the text.
    struct SEntry
    {
        size_t iSection = 0;
        std::string strName; // folded
        size_t iValue = 0;   // where the value starts
        size_t iEnd = 0;     // behind its last byte
        bool bDWord = false; // else of another type
        uint32_t uValue = 0;
    };

    explicit CRegText(std::string strText = {});

    // The names of a path joined by one '\' each; empty when there is none, or a control character
    // that a section line cannot hold.
    static std::string NormalizePath(std::string_view strPath);

    // strKey is a normalized path, here and below. A key is there with its own section, and with
    // one of a key below it.
    bool HasKey(const std::string& strKey) const;
    // The entry that counts, borrowed until the text changes; null when the key has none.
    const SEntry* FindEntry(const std::string& strKey, const std::string& strName) const;

    // Both add what is missing and return whether the text is another one now.
    bool AddKey(const std::string& strKey);
    bool SetDWord(const std::string& strKey, const std::string& strName, uint32_t uValue);

    size_t GetFirstDamage() const { return m_FirstDamage; } // line from 1 that is skipped, or 0

    const std::string& GetText() const { return m_Text; }

private:
    struct SSection
    {
        std::string strPath;  // folded; empty for a section whose line is unreadable
        size_t iNextLine = 0; // behind its last line that is readable
    };

    void Parse();
    bool ParseLine(size_t iStart, size_t iEnd, size_t iNext);
    bool ParseEntry(std::string_view line, SEntry& entry) const;
    const SSection* FindSection(const std::string& strKey) const;
    void AppendSection(const std::string& strKey);

    std::string m_Text;
    std::vector<SSection> m_Sections; // as they stand; a key may have several
    std::vector<SEntry> m_Entries;
    size_t m_FirstDamage = 0;
};
