#pragma once

#include <cstdint>

// Numbers of keyboard actions that host and plug-in both know; they come with IPlugin::OnAction and
// IEditorMode::OnAction.

// What the terrain tool registers with EditorHost::RegisterActions.
enum ETerrainAction : int32_t
{
    ACTION_TOGGLE_TERRAFORMING = 0,
    ACTION_BRUSH_LARGER = 1,
    ACTION_BRUSH_SMALLER = 2,
};

// What the host sends to move the camera of a view. A mode that takes them does so with the
// operations of EditorHost and EngineHost.
enum ECameraAction : int32_t
{
    CAMERA_FROM_EAST = 108, // the eight directions, counter-clockwise from +x
    CAMERA_FROM_SOUTH_EAST = 109,
    CAMERA_FROM_SOUTH = 110,
    CAMERA_FROM_SOUTH_WEST = 111,
    CAMERA_FROM_WEST = 112,
    CAMERA_FROM_NORTH_WEST = 113,
    CAMERA_FROM_NORTH = 114,
    CAMERA_FROM_NORTH_EAST = 115,
    CAMERA_TOGGLE_OFF = 116, // EditorHost::SetViewToggle
    CAMERA_TOGGLE_ON = 117,
    CAMERA_UP = 118,
    CAMERA_DOWN = 119,
    CAMERA_TURN_LEFT = 120,
    CAMERA_TURN_RIGHT = 121,
};
