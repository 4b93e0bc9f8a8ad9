#include "editor/app/CCameraCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CLevelViews.h"
#include "editor/app/CPluginCommands.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"
#include "host/ActionIds.h"

#include <QMenu>

#include <string>
#include <utility>

namespace
{

// The digits as they lie on the keyboard, and what their bookmarks are called.
constexpr char DIGITS[] = "1234567890";
constexpr float TILT = 10.0F; // degrees

void AddFlyKeys(QMenu& menu, CCommandList& commands)
{
    commands.Add(menu,
                 {
                     SCommand::Hold("camera.fly.forward", "Fly forward", Key('W')),
                     SCommand::Hold("camera.fly.back", "Fly back", Key('S')),
                     SCommand::Hold("camera.fly.left", "Fly to the left", Key('A')),
                     SCommand::Hold("camera.fly.right", "Fly to the right", Key('D')),
                     SCommand::Hold("camera.fly.up", "Fly up", Key('E')),
                     SCommand::Hold("camera.fly.down", "Fly down", Key('Q')),
                 });
}

} // namespace

CCameraCommands::CCameraCommands(CViewArea& views,
                                 CLevelViews& bookmarks,
                                 CPluginCommands& plugin,
                                 std::function<void()> showState)
    : m_Views(views)
    , m_Bookmarks(bookmarks)
    , m_Plugin(plugin)
    , m_ShowState(std::move(showState))
{
}

void CCameraCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto frameSpot = [this]
    {
        m_Views.GetActive()->FrameSpot();
    };
    const auto frameAll = [this]
    {
        m_Views.GetActive()->FrameAll();
    };
    // The mode that is current may have more to do for one of them, so the plug-in gets them first.
    const auto send = [this](int32_t iAction)
    {
        return [this, iAction]
        {
            m_Plugin.SendAction(iAction);
        };
    };
    commands.Add(
        menu,
        {
            SCommand::Run("camera.frame", "&Frame the spot under the cursor", Key('F'), frameSpot),
            SCommand::Run("camera.frame_all", "Frame the &terrain", Key(Qt::Key_Home), frameAll),
            SCommand::Line(),
            SCommand::Run("camera.from_east", "From the &east", Ctrl('6'), send(CAMERA_FROM_EAST)),
            SCommand::Run("camera.from_south_east",
                          "From the south-east",
                          Ctrl('3'),
                          send(CAMERA_FROM_SOUTH_EAST)),
            SCommand::Run(
                "camera.from_south", "From the &south", Ctrl('2'), send(CAMERA_FROM_SOUTH)),
            SCommand::Run("camera.from_south_west",
                          "From the south-west",
                          Ctrl('1'),
                          send(CAMERA_FROM_SOUTH_WEST)),
            SCommand::Run("camera.from_west", "From the &west", Ctrl('4'), send(CAMERA_FROM_WEST)),
            SCommand::Run("camera.from_north_west",
                          "From the north-west",
                          Ctrl('7'),
                          send(CAMERA_FROM_NORTH_WEST)),
            SCommand::Run(
                "camera.from_north", "From the &north", Ctrl('8'), send(CAMERA_FROM_NORTH)),
            SCommand::Run("camera.from_north_east",
                          "From the north-east",
                          Ctrl('9'),
                          send(CAMERA_FROM_NORTH_EAST)),
            SCommand::Run("camera.up", "Step &up", Key(Qt::Key_PageUp), send(CAMERA_UP)),
            SCommand::Run("camera.down", "Step &down", Key(Qt::Key_PageDown), send(CAMERA_DOWN)),
            SCommand::Run(
                "camera.turn_left", "Turn &left", Key(Qt::Key_Left), send(CAMERA_TURN_LEFT)),
            SCommand::Run(
                "camera.turn_right", "Turn &right", Key(Qt::Key_Right), send(CAMERA_TURN_RIGHT)),
            // Up and down are the lists' keys.
            SCommand::Run("camera.look_up", "Loo&k up", NO_KEY, [this] { Tilt(TILT); }),
            SCommand::Run("camera.look_down", "Look d&own", NO_KEY, [this] { Tilt(-TILT); }),
        });
    AddBookmarks(*menu.addMenu(Words("&Bookmarks")), commands);
    AddFlyKeys(menu, commands);
}

void CCameraCommands::Tilt(float fDegrees)
{
    CViewWidget& view = *m_Views.GetActive();
    SViewLook look = view.GetNavigator().GetLook();
    look.bFramed = false;
    look.fPitch += fDegrees;
    view.LookFrom(look); // nothing in a flat view
}

void CCameraCommands::AddBookmarks(QMenu& menu, CCommandList& commands)
{
    const auto keep = [this](const char* pszText, char cDigit)
    {
        m_Texts.push_back(pszText + std::string(1, cDigit));
        return m_Texts.back().c_str();
    };
    for (const char* pDigit = DIGITS; *pDigit != 0; ++pDigit)
    {
        const auto i = static_cast<size_t>(*pDigit - '0');
        commands.Add(menu,
                     {SCommand::Run(
                         keep("bookmark.go_", *pDigit),
                         keep(Words("Go to bookmark &"), *pDigit),
                         Alt(static_cast<uint32_t>(*pDigit)),
                         [this, i] { GoToBookmark(i); },
                         [this, i] { return m_Bookmarks.HasBookmark(i); })});
    }
    menu.addSeparator();
    for (const char* pDigit = DIGITS; *pDigit != 0; ++pDigit)
    {
        const auto i = static_cast<size_t>(*pDigit - '0');
        commands.Add(menu,
                     {SCommand::Once(keep("bookmark.set_", *pDigit),
                                     keep(Words("Set bookmark &"), *pDigit),
                                     CtrlAlt(static_cast<uint32_t>(*pDigit)),
                                     [this, i] { SetBookmark(i); })});
    }
}

void CCameraCommands::SetBookmark(size_t i)
{
    m_Bookmarks.SetBookmark(m_Views, i);
    m_Views.GetActive()->GetNote().ShowValue(QString(Words("bookmark %1 is here")).arg(i));
    m_ShowState(); // there is one to go to
}

void CCameraCommands::GoToBookmark(size_t i)
{
    if (!m_Bookmarks.GoToBookmark(m_Views, i))
    {
        m_Views.GetActive()->GetNote().ShowValue(
            QString(Words("no view of the kind of bookmark %1 is open")).arg(i));
    }
}
