#include "editor/app/CDialogTitles.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QGridLayout>
#include <QMessageBox>
#include <QScreen>
#include <QStyle>

#include <algorithm>

namespace
{

constexpr int BUTTONS = 4; // squares as high as the title: buttons, and as much on the other side

void Widen(QDialog& dialog, int iWidth)
{
    auto* pGrid = qobject_cast<QGridLayout*>(dialog.layout());
    if (qobject_cast<QMessageBox*>(&dialog) != nullptr && pGrid != nullptr)
    {
        // It gives itself a fixed size by its layout, each time it is shown.
        pGrid->addItem(new QSpacerItem(iWidth, 0), pGrid->rowCount(), 0, 1, pGrid->columnCount());
        return;
    }
    dialog.setMinimumWidth(
        std::max({dialog.minimumWidth(), dialog.minimumSizeHint().width(), iWidth}));
}

} // namespace

CDialogTitles::CDialogTitles()
{
    QCoreApplication::instance()->installEventFilter(this);
}

int CDialogTitles::GetTitleWidth(const QWidget& dialog)
{
    QString strTitle = dialog.windowTitle().remove("[*]");
    const QString strProgram = QGuiApplication::applicationDisplayName();
    if (!strTitle.endsWith(strProgram)) // the window system appends it
    {
        strTitle += " \u2014 " + strProgram;
    }
    const QFontMetrics metrics(QApplication::font("QMdiSubWindowTitleBar"));
    return metrics.horizontalAdvance(strTitle) +
           BUTTONS * dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

bool CDialogTitles::eventFilter(QObject* pReceiver, QEvent* pEvent)
{
    auto* pDialog = pEvent->type() == QEvent::Show ? qobject_cast<QDialog*>(pReceiver) : nullptr;
    if (pDialog != nullptr && pDialog->isWindow() && !pEvent->spontaneous())
    {
        const int iWidth =
            std::min(GetTitleWidth(*pDialog), pDialog->screen()->availableGeometry().width());
        if (pDialog->sizeHint().width() < iWidth || pDialog->width() < iWidth)
        {
            Widen(*pDialog, iWidth);
        }
    }
    return false;
}
