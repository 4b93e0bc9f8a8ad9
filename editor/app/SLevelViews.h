#pragma once

#include "editor/view/SViewLook.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

// Where the views of one level looked from, and places to come back to. It is the person's and not
// the level's: it is kept in the user's own folder, by the path of the level, so one that cannot be
// written or lies elsewhere now has all but this.
struct SLevelViews
{
    static constexpr size_t BOOKMARKS = 10;

    std::vector<SViewLook> views; // in the order of the window, then those that were closed
    std::array<std::optional<SViewLook>, BOOKMARKS> bookmarks;

    // strLevel: a full path, or another name that no other level has. A level without a file of
    // these, or with one that says nothing, has none.
    static SLevelViews Load(const std::string& strLevel);
    // As Save would write it.
    std::string MakeText(const std::string& strLevel) const;
    // False after one logged line. Of very many levels those go that were left first.
    static bool Save(const std::string& strLevel, const std::string& strText);
    static void Remove(const std::string& strLevel);
};
