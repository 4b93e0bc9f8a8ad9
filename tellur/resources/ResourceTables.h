#pragma once

#include "framework/core/Resources.h"

// The tables that the module is put together from, one source file a kind.
std::span<const SMenuResource> GetMenuTable();
std::span<const SToolBarResource> GetToolBarTable();
std::span<const SStringResource> GetStringTable();
std::span<const SCursorResource> GetCursorTable();
std::span<const SBitmapResource> GetBitmapTable();
std::span<const SDialogResource> GetDialogTable();
