#pragma once

#include "host/EngineHost.h"

#include <map>
#include <string>

// Text macros by name, without regard to case (of ASCII letters). Owned by the engine.
class CTextMacroTable final : public ITextMacroTable
{
public:
    const char* Find(const char* pszName) const override;

    // Registers a value or replaces the one there is. A null or empty name is ignored; a null value
    // removes the name. Texts are copied.
    void Set(const char* pszName, const char* pszValue);

private:
    std::map<std::string, std::string> m_Values; // by name in lower case
};
