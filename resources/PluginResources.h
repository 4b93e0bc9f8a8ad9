#pragma once

#include "framework/core/Resources.h"

// The plug-in's menus, toolbars, texts, cursors and pictures. Static storage of the library.
const SResourceModule& GetPluginResources();
