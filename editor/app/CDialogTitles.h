#pragma once

#include <QObject>

// Makes every dialog of the program at least as wide as its title in the frame that desktops put
// around it, which would cut it. Owned by the window. UI thread.
class CDialogTitles : public QObject
{
public:
    CDialogTitles();

    bool eventFilter(QObject* pReceiver, QEvent* pEvent) override;

    static int GetTitleWidth(const QWidget& dialog); // with the frame's buttons
};
