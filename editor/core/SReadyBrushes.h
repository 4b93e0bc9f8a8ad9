#pragma once

#include "editor/core/SizeRule.h"

#include <string>
#include <vector>

// A brush that comes along, and the shares that make it fit a level.
struct SReadyBrush
{
    std::string strName;
    SSizeShare share;

    // As it stands in the file, and with it in any library that it was saved in; one of another
    // function or with other numbers is a person's own.
    std::string strFunction;
    float fExtent = 0.0F;
    std::vector<float> fields; // of its function, those that are numbers

    bool IsOf(const std::string& strOtherFunction, const SToolSizes& sizes) const;
};

// The shares of a tool whose brush nobody has changed.
struct SReadyTool
{
    std::string strFunction;
    SSizeShare share;
};

// What is in the file of ready brushes. The plug-in reads the brushes of the same file; the shares
// are for whoever knows the level.
struct SReadyBrushes
{
    std::vector<SReadyBrush> brushes;
    std::vector<SReadyTool> tools;

    // False, after a logged line, for a file that cannot be read; then nothing is ready.
    bool Read(const char* pszFile);

    const SReadyBrush* FindBrush(const std::string& strName) const; // null: none of them
    // The one that a brush still is, whatever its name is now; null for a person's own. Of several
    // that are alike, and so have the same shares, the one of that name.
    const SReadyBrush* FindAlike(const std::string& strName,
                                 const std::string& strFunction,
                                 const SToolSizes& sizes) const;
    // Shares of nothing for an unknown function.
    SSizeShare FindShare(const std::string& strFunction) const;
};
