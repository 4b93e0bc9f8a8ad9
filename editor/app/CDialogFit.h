#pragma once

#include <QObject>

// Makes every dialog of the program at least as wide as its title in the frame that desktops put
// around it, which would cut it, and no larger than its screen: what does not fit is scrolled, with
// the buttons below it. Owned by the window. UI thread.
class CDialogFit : public QObject
{
public:
    CDialogFit();

    bool eventFilter(QObject* pReceiver, QEvent* pEvent) override;

    static int GetTitleWidth(const QWidget& dialog); // with the frame's buttons
};
