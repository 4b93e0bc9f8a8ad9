#pragma once

#include "editor/app/COverlayBar.h"

#include <functional>

class QLabel;

// Says at the lower edge of the views that something went wrong, until it is closed, the next fault
// comes or the level that it may speak of goes. Owned by the window.
class CFaultBar : public COverlayBar
{
public:
    // showMessages: the person wants to see all of them.
    CFaultBar(QMainWindow& window, std::function<void()> showMessages);

    void ShowFault(const QString& strFault);
    void Forget(); // all that were shown

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void ElideText();

    QLabel* m_pText; // the bar's
    QString m_Fault;
    int m_nFaults = 0; // since it was closed
};
