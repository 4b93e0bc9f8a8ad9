#pragma once

#include <cstdint>
#include <functional>
#include <string>

class CMenu;
class CToolBar;
class QMainWindow;
class QMenu;
class QToolBar;

// The plug-in's menus and toolbars as Qt shows them. What is chosen comes back as the global number
// of the command.
using FCommand = std::function<void(uint32_t)>;
// The text of a command, by its global number; empty for none.
using FCommandText = std::function<std::string(uint32_t)>;

// Appends the items of a menu. onCommand outlives the Qt menu.
void FillMenu(QMenu& shown, const CMenu& menu, const FCommand& onCommand);

// A toolbar that follows the plug-in's until the plug-in's listener is taken off. A button has the
// text of its command, as its tip and in the status bar too. bar: borrowed. Owned by the window.
QToolBar* MakeToolBar(QMainWindow& window,
                      CToolBar& bar,
                      const FCommand& onCommand,
                      const FCommandText& getText);
