#pragma once

#include <array>
#include <cstdint>

// Classes of the characters of a file. Only ASCII counts as letters.
constexpr uint8_t TCPARSE_SPACE = 1;
constexpr uint8_t TCPARSE_WORD = 2;
constexpr uint8_t TCPARSE_DIGIT = 4;
constexpr uint8_t TCPARSE_NUMBER_END = 8; // may follow a number

constexpr std::array<uint8_t, 256> TCPARSE_CHARACTERS = []
{
    std::array<uint8_t, 256> classes = {};
    for (unsigned int i = 0; i < 26; ++i)
    {
        classes['a' + i] = TCPARSE_WORD;
        classes['A' + i] = TCPARSE_WORD;
    }
    classes['_'] = TCPARSE_WORD;
    for (unsigned int i = 0; i < 10; ++i)
    {
        classes['0' + i] = TCPARSE_WORD | TCPARSE_DIGIT;
    }
    for (const unsigned char cBlank : {' ', '\t', '\r', '\n'})
    {
        classes[cBlank] = TCPARSE_SPACE | TCPARSE_NUMBER_END;
    }
    for (const unsigned char cEnd : {',', ')', ']'})
    {
        classes[cEnd] = TCPARSE_NUMBER_END;
    }
    return classes;
}();

constexpr bool TCParseIs(char cChar, uint8_t uClass)
{
    return (TCPARSE_CHARACTERS[static_cast<unsigned char>(cChar)] & uClass) != 0;
}
