#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// The resources of a program or a library: constant tables that live as long as its code. Ids are
// unique within a kind.

// An item with sub-items is a pop-up and has no id. A separator has neither id nor text.
struct SMenuItemResource
{
    uint32_t uId = 0;
    const char* pszText = nullptr;
    const SMenuItemResource* pSubItems = nullptr;
    size_t nSubItems = 0;
};

struct SMenuResource
{
    uint32_t uId = 0;
    std::span<const SMenuItemResource> items = {};
};

struct SToolBarButtonResource
{
    uint32_t uId = 0; // command
    uint32_t uStyle = 0;
    int iImage = 0; // position in the toolbar's bitmap, counted in buttons
};

// The bitmap holds the buttons' images side by side.
struct SToolBarResource
{
    uint32_t uId = 0;
    int iButtonWidth = 0; // pixels of one image
    int iButtonHeight = 0;
    uint32_t uBitmapId = 0;
    std::span<const SToolBarButtonResource> buttons = {};
};

struct SStringResource
{
    uint32_t uId = 0;
    const char* pszText = nullptr;
};

// A PNG picture with alpha and the pixel of it that points.
struct SCursorResource
{
    uint32_t uId = 0;
    const uint8_t* pPng = nullptr;
    size_t nBytes = 0;
    int32_t iHotX = 0;
    int32_t iHotY = 0;
};

struct SBitmapResource
{
    uint32_t uId = 0;
    const uint8_t* pPng = nullptr;
    size_t nBytes = 0;
};

struct SResourceModule
{
    const char* pszName = nullptr;
    std::span<const SMenuResource> menus = {};
    std::span<const SToolBarResource> toolBars = {};
    std::span<const SStringResource> strings = {};
    std::span<const SCursorResource> cursors = {};
    std::span<const SBitmapResource> bitmaps = {};
};
