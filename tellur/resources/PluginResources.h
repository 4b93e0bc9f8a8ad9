#pragma once

#include "framework/core/Resources.h"

// The plug-in's menus, toolbars, texts, cursors, pictures and dialogs. Static storage of the
// library.
const SResourceModule& GetPluginResources();
