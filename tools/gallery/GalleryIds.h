#pragma once

#include "framework/core/Resources.h"

// The gallery's form and dialog and the ids of their controls.

constexpr uint32_t GALLERY_FORM = 9001;
constexpr uint32_t GALLERY_DIALOG = 9002;

enum EGalleryId : uint32_t
{
    GALLERY_PUSH = 9101,
    GALLERY_CHECK,
    GALLERY_THREE,
    GALLERY_TOGGLE,
    GALLERY_DRAWN,
    GALLERY_EDIT,
    GALLERY_READ_ONLY,
    GALLERY_SLIDER,
    GALLERY_NUMBER,
    GALLERY_SPIN,
    GALLERY_LIST,
    GALLERY_DROP,
    GALLERY_REPORT,
    GALLERY_CANVAS,
    GALLERY_DIALOG_BUTTON,
    GALLERY_MESSAGE,
    GALLERY_COLOR,
    GALLERY_MENU,
    GALLERY_NOTES,
};

const SResourceModule& GetGalleryResources();
