#pragma once

#include <string>

// Folders of the user, full paths without a separator at the end; they need not exist.
std::string GetUserConfigFolder(); // settings: tellur in $XDG_CONFIG_HOME, else in ~/.config
std::string GetUserStateFolder();  // tellur in $XDG_STATE_HOME, else in ~/.local/state
