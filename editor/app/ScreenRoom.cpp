#include "editor/app/ScreenRoom.h"

#include <QByteArray>
#include <QDataStream>
#include <QDockWidget>
#include <QGuiApplication>
#include <QLayout>
#include <QMainWindow>
#include <QScreen>
#include <QStyle>
#include <QWidget>

#include <algorithm>

void KeepOnScreen(QWidget& window, const QWidget* pBeside)
{
    if ((window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0)
    {
        return;
    }
    const QRect frame = window.frameGeometry();
    const QScreen* pScreen = QGuiApplication::screenAt(frame.center());
    if (pScreen == nullptr)
    {
        pScreen = pBeside != nullptr ? pBeside->screen() : window.screen();
    }
    const QRect room = pScreen->availableGeometry();
    // What the system draws around it is not known before it is shown.
    const int iTitle =
        window.isVisible() ? 0 : window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int iAround = std::max(frame.height() - window.height(), iTitle);
    window.resize(std::min(window.width(), room.width()),
                  std::min(window.height(), room.height() - iAround));
    // A window may not become smaller than what it holds.
    const int iMostX = std::max(room.left(), room.right() + 1 - window.width());
    const int iMostY = std::max(room.top(), room.bottom() + 1 - window.height());
    const QPoint place(std::clamp(frame.x(), room.left(), iMostX),
                       std::clamp(frame.y(), room.top(), iMostY));
    if (place != frame.topLeft())
    {
        window.move(place);
    }
}

bool RestorePlace(QWidget& window, const QByteArray& geometry)
{
    if (window.restoreGeometry(geometry))
    {
        return true;
    }
    // Qt leaves out what it kept on a screen much wider or narrower, and says no more than that.
    constexpr quint32 MAGIC = 0x1D9D0CB;
    QDataStream stream(geometry);
    stream.setVersion(QDataStream::Qt_4_0);
    quint32 uMagic = 0;
    quint16 uMajor = 0;
    quint16 uMinor = 0;
    QRect frame;
    QRect normal;
    stream >> uMagic >> uMajor >> uMinor >> frame >> normal;
    if (stream.status() != QDataStream::Ok || uMagic != MAGIC || !normal.isValid())
    {
        return false;
    }
    window.setGeometry(normal);
    return true;
}

void WidenDock(QDockWidget& dock, int iWidth)
{
    auto* pWindow = qobject_cast<QMainWindow*>(dock.parentWidget());
    if (pWindow == nullptr || dock.isFloating())
    {
        return;
    }
    pWindow->layout()->activate();
    if (pWindow->isVisible() && dock.width() >= iWidth)
    {
        return;
    }
    const Qt::DockWidgetAreas sides = Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea;
    const Qt::DockWidgetArea eArea = pWindow->dockWidgetArea(&dock);
    int iOther = 0;
    for (QDockWidget* pOther : pWindow->findChildren<QDockWidget*>())
    {
        const Qt::DockWidgetArea eOther = pWindow->dockWidgetArea(pOther);
        if (eOther != eArea && sides.testFlag(eOther) && pOther->isVisible() &&
            !pOther->isFloating())
        {
            iOther = std::max(iOther, pOther->width());
        }
    }
    const int iRoom = pWindow->width() - pWindow->centralWidget()->minimumWidth() - iOther;
    const int iLeast = dock.minimumSizeHint().width();
    pWindow->resizeDocks(
        {&dock}, {std::clamp(iWidth, iLeast, std::max(iRoom, iLeast))}, Qt::Horizontal);
}
