#pragma once

#include "host/Export.h"

#include <cstdint>
#include <string>

// Where a key path starts. The registry of the user who runs the program is the only one.
enum class ERegHive : uint32_t
{
    CurrentUser,
};

// What QueryDWord answers.
enum ERegResult : int32_t
{
    REG_RESULT_OK = 0,
    REG_RESULT_NOT_FOUND = 2,   // the key has no value of that name
    REG_RESULT_NO_KEY = 6,      // the holder holds no key
    REG_RESULT_OTHER_TYPE = 13, // there is one, but it is no DWORD
};

// Holds a key of the registry, through which settings of windows are kept per user in one text
// file: $XDG_CONFIG_HOME/tellur/registry.ini, else $HOME/.config/tellur/registry.ini, looked up
// anew by every operation. Several programs may read and write it at the same time. A write
// returns when it is on the disk, and waits for those of other programs.
//
// Key paths are names joined by '\'; empty names, such as that before a leading '\', count for
// nothing. Names of keys and values are compared without regard to case (ASCII letters).
//
// The key is never closed, kept on purpose: a holder may be copied and dropped as it is, and a copy
// is good for as long as the program runs. UI thread.
class TELLUR_API CRegValue
{
public:
    // Holds the key and returns 0, or holds none and returns -1 when it is not there. A key is
    // there with every key above it.
    int32_t Open(ERegHive eParent, const char* pszPath);

    // Holds the key, which is made when it is not there. When it cannot be made none is held, and
    // nothing is logged.
    void Create(ERegHive eParent, const char* pszPath);

    // Writes a 4-byte number under the name (null: the empty name), over a value of any type.
    // Returns 0 whatever happens; a write that fails leaves the old value.
    int32_t SetDWord(const char* pszName, uint32_t uValue);

    // Reads a 4-byte number. Anything but REG_RESULT_OK leaves uValue as it was, so a caller that
    // does not look at the result keeps its default.
    ERegResult QueryDWord(const char* pszName, uint32_t& uValue) const;

private:
    const std::string* m_pKey = nullptr; // in a table that only grows; null: none
};
