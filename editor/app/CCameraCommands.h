#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>

class CCommandList;
class CLevelViews;
class CPluginCommands;
class CViewArea;
class QMenu;

// The commands that move the camera of the active view, its bookmarks, and the keys that fly it as
// long as they are held. Owned by the menus.
class CCameraCommands
{
public:
    // Borrowed. showState: menus may be others.
    CCameraCommands(CViewArea& views,
                    CLevelViews& bookmarks,
                    CPluginCommands& plugin,
                    std::function<void()> showState);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void Tilt(float fDegrees); // the camera of the active view, upwards
    void AddBookmarks(QMenu& menu, CCommandList& commands);
    void SetBookmark(size_t i);
    void GoToBookmark(size_t i);

    CViewArea& m_Views;
    CLevelViews& m_Bookmarks;
    CPluginCommands& m_Plugin;
    std::function<void()> m_ShowState;
    std::deque<std::string> m_Texts; // ids and names of the bookmarks' commands
};
