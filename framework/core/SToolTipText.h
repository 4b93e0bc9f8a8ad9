#pragma once

#include <cstdint>

struct SResourceModule;

// The question for the text of a tool's tip. The window around the tool is asked: it fills in the
// answer, or hands the question on to somebody else.
struct SToolTipText
{
    static constexpr int BUFFER_SIZE = 80; // with the terminator

    bool bIsWindow = false; // the tool is a control, uId is its control id
    uint32_t uId = 0;
    char szText[BUFFER_SIZE] = {};              // the answer
    const SResourceModule* pInstance = nullptr; // where uId is a text's; null: the text is szText
};
