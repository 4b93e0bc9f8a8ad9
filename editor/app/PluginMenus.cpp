#include "editor/app/PluginMenus.h"

#include "framework/core/CMenu.h"
#include "framework/core/CToolBar.h"
#include "framework/core/ResourceModule.h"

#include <QAction>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QPixmap>
#include <QPointer>
#include <QToolBar>

namespace
{

QPixmap LoadPicture(const uint8_t* pPng, size_t nBytes)
{
    QPixmap picture;
    if (pPng != nullptr)
    {
        picture.loadFromData(pPng, static_cast<uint>(nBytes));
    }
    return picture;
}

// One button's part of the strip, at both scales.
QIcon MakeIcon(const CToolBar& bar, int iImage)
{
    QIcon icon;
    const SBitmapResource* pBitmap = FindBitmapResource(bar.GetBitmapId());
    if (pBitmap == nullptr)
    {
        return icon;
    }
    const SPictureResource& picture = pBitmap->picture;
    const QRect part(iImage * bar.GetButtonWidth(), 0, bar.GetButtonWidth(), bar.GetButtonHeight());
    icon.addPixmap(LoadPicture(picture.pPng, picture.nBytes).copy(part));
    QPixmap sharp = LoadPicture(picture.pPngDouble, picture.nBytesDouble)
                        .copy(QRect(part.topLeft() * 2, part.size() * 2));
    if (!sharp.isNull())
    {
        sharp.setDevicePixelRatio(2.0);
        icon.addPixmap(sharp);
    }
    return icon;
}

void ShowButtons(QToolBar& shown, const CToolBar& bar, const FCommandText& getText)
{
    shown.setWindowTitle(QString::fromStdString(bar.GetWindowText()));
    const QList<QAction*> actions = shown.actions();
    for (qsizetype i = 0; i < actions.size(); ++i)
    {
        uint32_t uId = 0;
        uint32_t uStyle = 0;
        int iImage = 0;
        if (bar.GetButtonInfo(static_cast<size_t>(i), uId, uStyle, iImage))
        {
            const QString strText = QString::fromStdString(getText(uId));
            actions[i]->setData(uId);
            actions[i]->setText(strText); // the tip too
            actions[i]->setStatusTip(strText);
            actions[i]->setChecked(bar.IsButtonPressed(uId) || bar.IsButtonChecked(uId));
        }
    }
}

} // namespace

void FillMenu(QMenu& shown, const CMenu& menu, const FCommand& onCommand)
{
    for (size_t i = 0; i < menu.GetItemCount(); ++i)
    {
        const QString strText = QString::fromStdString(menu.GetItemText(i));
        if (menu.IsSeparator(i))
        {
            shown.addSeparator();
        }
        else if (const CMenu* pSubMenu = menu.GetSubMenu(i))
        {
            FillMenu(*shown.addMenu(strText), *pSubMenu, onCommand);
        }
        else
        {
            const uint32_t uId = menu.GetItemId(i);
            QObject::connect(shown.addAction(strText),
                             &QAction::triggered,
                             &shown,
                             [onCommand, uId] { onCommand(uId); });
        }
    }
}

QToolBar* MakeToolBar(QMainWindow& window,
                      CToolBar& bar,
                      const FCommand& onCommand,
                      const FCommandText& getText)
{
    auto* pShown = new QToolBar(&window);
    pShown->setObjectName("plugin-toolbar");
    for (size_t i = 0; i < bar.GetButtonCount(); ++i)
    {
        uint32_t uId = 0;
        uint32_t uStyle = 0;
        int iImage = 0;
        bar.GetButtonInfo(i, uId, uStyle, iImage);
        QAction* pAction = pShown->addAction(MakeIcon(bar, iImage), QString());
        pAction->setCheckable(true);
        QObject::connect(pAction,
                         &QAction::triggered,
                         pShown,
                         // The number is asked at the click: the plug-in may have given the button
                         // another one.
                         [pAction, onCommand] { onCommand(pAction->data().toUInt()); });
    }
    ShowButtons(*pShown, bar, getText);
    // The shown toolbar may go before the plug-in's, which keeps the listener.
    const QPointer<QToolBar> pAlive(pShown);
    bar.SetChangeListener(
        [pAlive, &bar, getText]
        {
            if (pAlive != nullptr)
            {
                ShowButtons(*pAlive, bar, getText);
            }
        });
    window.addToolBar(pShown);
    return pShown;
}
