#pragma once

#include <sys/stat.h>

#include <string>

constexpr mode_t PRIVATE_FOLDER_MODE = 0700; // of folders that only the user looks into

// Folders of the user, full paths without a separator at the end; they need not exist.
std::string GetUserConfigFolder(); // settings: tellur in $XDG_CONFIG_HOME, else in ~/.config
std::string GetUserDataFolder();   // the user root: tellur in $XDG_DATA_HOME, else ~/.local/share
std::string GetUserStateFolder();  // tellur in $XDG_STATE_HOME, else in ~/.local/state
