#pragma once

#include "host/Export.h"

#include <cstdint>

// Where the readers of a file report what is wrong with it. Whoever implements it adds the place.
class ITCParseErrors
{
public:
    // Reports a message. Does not touch the error flag. The message is cut at 8191 bytes.
    virtual void Error(const char* pszFormat, ...) TELLUR_PRINTF(2, 3) = 0;

    virtual ~ITCParseErrors() = default;

    // Reports a message as it stands, and sets the error flag.
    void Fail(int32_t* pError, const char* pszMessage)
    {
        Error("%s", pszMessage);
        *pError = 1;
    }
};
