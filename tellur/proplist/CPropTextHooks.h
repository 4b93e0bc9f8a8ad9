#pragma once

#include "tellur/proplist/SPropListHooks.h"

#include <utility>

struct SPropRow;

// What editors show of a value and take from what is typed: as the owner of the list says, else the
// usual way. The rows have a field.
class CPropTextHooks
{
public:
    void Set(SPropListHooks hooks) { m_Hooks = std::move(hooks); }

    std::string ParseText(const SPropRow& row, const std::string& strTyped) const;
    std::string FormatText(const SPropRow& row, const std::string& strText) const;
    // The text of a number that a spinner counts to; empty: as the spinner writes it.
    std::string FormatNumber(const SPropRow& row, double fValue) const;
    bool MayEdit(const SPropRow& row) const;

private:
    SPropListHooks m_Hooks;
};
