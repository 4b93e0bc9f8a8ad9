#pragma once

#include <cstdint>

// The plug-in's command numbers. Resources number locally; the host sees the action handle plus the
// local command.

enum ELocalCommand : uint32_t
{
    COMMAND_TOGGLE_PANEL = 1,
    COMMAND_SAVE_HEIGHT_MAP = 2,
    COMMAND_APPLY_PICKED_HEIGHT = 3,
    COMMAND_EDIT_BITMAP = 4,
    COMMAND_EXPORT_EXTENT = 5,
    COMMAND_LAST = 5,
};

constexpr uint32_t TOOLBAR_ID = 2100;
constexpr uint32_t MENU_ID = 2116;

// Resource id of each local command, by command - 1.
constexpr uint32_t COMMAND_RESOURCE_IDS[COMMAND_LAST] = {2102, 32796, 32797, 32800, 32801};
