#pragma once

#include <cstdint>
#include <functional>

class CMenu;
class CToolBar;
class QMainWindow;
class QMenu;
class QToolBar;

// The plug-in's menus and toolbars as Qt shows them. What is chosen comes back as the global number
// of the command.
using FCommand = std::function<void(uint32_t)>;

// Appends the items of a menu. onCommand outlives the Qt menu.
void FillMenu(QMenu& shown, const CMenu& menu, const FCommand& onCommand);

// A toolbar that follows the plug-in's until the plug-in's listener is taken off. bar: borrowed.
// Owned by the window.
QToolBar* MakeToolBar(QMainWindow& window, CToolBar& bar, const FCommand& onCommand);
