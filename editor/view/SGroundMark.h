#pragma once

#include "host/HostTypes.h"
#include "host/IPluginMark.h"

#include <array>
#include <cstddef>

class ITexture;

// Where the mark of the tool is shown.
enum class EMarkPlace : uint8_t
{
    Box,    // in the middle of the box that the mode projects its shape into
    Cursor, // about a point
    None,
};

// One more picture of the mark, where a stroke does the same in another place. An offset from the
// middle of the mark is mirrored in x first where bFlip says so and then turned by fTurn (radians,
// from +x towards +z).
struct SMarkImage
{
    SVec3 at; // its middle, terrain units; the height counts where the tool has a band
    float fTurn = 0.0F;
    bool bFlip = false;
};

// The mark of the tool at hand on the ground, in one frame.
struct SGroundMark
{
    static constexpr size_t MOST_IMAGES = 16;

    EMarkPlace ePlace = EMarkPlace::Box;
    SVec3 at;           // with Cursor, terrain units
    float fTurn = 0.0F; // of the shape, as that of an image; a strip has its own way

    // Whether it is known what the tool does. Otherwise the projected shape is shown as it is, as
    // large as its box.
    bool bTool = false;
    SToolMark tool;
    ITexture* pShape = nullptr; // of tool.pShape, borrowed for the call; null where that is null
    float fSignPixels = 1.0F;   // device pixels of a point of the sign beside the middle; 0: none
    std::array<SMarkImage, MOST_IMAGES> images;
    size_t nImages = 0;
};
