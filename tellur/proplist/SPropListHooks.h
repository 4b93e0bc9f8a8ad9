#pragma once

#include <functional>
#include <string>

class CRTTIField;

// How an owner of a property list may change what its editors show and take; an empty function
// leaves it to the editors.
struct SPropListHooks
{
    std::function<std::string(const CRTTIField&, const std::string&)> format; // value to shown text
    std::function<std::string(const CRTTIField&, const std::string&)> parse;  // typed text to value
    std::function<bool(const CRTTIField&)> mayEdit;
};
