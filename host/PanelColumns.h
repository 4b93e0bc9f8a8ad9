#pragma once

// Where the widths of the columns of the panel's property list are kept: a key below the host's
// registry root, with a number for each column, in pixels at 100 %. The list reads it when its
// columns are made and writes it when it goes; a host may write it before the first time.
inline constexpr const char* PANEL_COLUMNS_KEY =
    "\\Montar\\Settings\\Tellur prop control columns info";
inline constexpr const char* PANEL_COLUMN_NAME = "name";
inline constexpr const char* PANEL_COLUMN_VALUE = "value";
