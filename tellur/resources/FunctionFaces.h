#pragma once

#include "framework/core/Resources.h"
#include "host/IPluginMark.h"

#include <cstdint>
#include <span>

// What a designer sees of a height function: its button on the panel, its entry in a menu, its
// pictures and texts. Resources, panel and menus are made by walking the table, so a function that
// has a row here has all of them.
struct SFunctionFace
{
    const char* pszFunction = ""; // the name of its class in files
    int iPlace = 0;               // on the panel and in menus, from 0
    uint32_t uButton = 0;         // id of the button's control and of its tip
    const char* pszButton = "";   // what the button says where its picture cannot be drawn
    const char* pszTip = "";
    const char* pszMenu = "";           // '&' before the letter that chooses it
    EToolKind eKind = EToolKind::Other; // which its mark on the ground shows
    SBitmapResource image;              // of the button
    SCursorResource cursor;             // two functions may have the same
};

// In the order in which the plug-in makes the functions. Static storage.
std::span<const SFunctionFace> GetFunctionFaces();

// The same by their places.
std::span<const SFunctionFace* const> GetFunctionPlaces();
