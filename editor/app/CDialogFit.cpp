#include "editor/app/CDialogFit.h"

#include "editor/app/CFormScroll.h"
#include "editor/app/ScreenRoom.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

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

// Puts all but the buttons into an area that scrolls. The layout stays the same object, so that a
// dialog goes on working with it.
void Scroll(QDialog& dialog)
{
    QLayout* pForm = dialog.layout();
    auto* pButtons = dialog.findChild<QDialogButtonBox*>(QString(), Qt::FindDirectChildrenOnly);
    if (pButtons != nullptr)
    {
        pForm->removeWidget(pButtons);
    }
    auto* pContent = new QWidget; // the area's
    pContent->setLayout(pForm);
    auto* pArea = new CFormScroll(&dialog, pContent);
    auto* pOuter = new QVBoxLayout(&dialog);
    const QMargins inner = pForm->contentsMargins();
    pForm->setContentsMargins(0, 0, 0, 0);
    pOuter->setContentsMargins(inner);
    pOuter->addWidget(pArea);
    if (pButtons != nullptr)
    {
        pOuter->addWidget(pButtons);
    }
}

void FitScreen(QDialog& dialog)
{
    // Those of the toolkit fit by themselves, or hold too little.
    if (dialog.layout() == nullptr || qobject_cast<QMessageBox*>(&dialog) != nullptr ||
        qobject_cast<QFileDialog*>(&dialog) != nullptr)
    {
        return;
    }
    QSize room = dialog.screen()->availableSize();
    room.rheight() -= dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QSize least = dialog.layout()->minimumSize();
    if (least.width() <= room.width() && least.height() <= room.height())
    {
        dialog.setMinimumSize(dialog.minimumSize().boundedTo(room));
        dialog.resize(dialog.size().boundedTo(room));
        return;
    }
    Scroll(dialog);
    dialog.setMinimumSize(0, 0);
    const int iBar = dialog.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    dialog.resize(std::min(std::max(least.width(), dialog.width()) + iBar, room.width()),
                  room.height());
    KeepOnScreen(dialog, dialog.parentWidget());
}

} // namespace

CDialogFit::CDialogFit()
{
    QCoreApplication::instance()->installEventFilter(this);
}

int CDialogFit::GetTitleWidth(const QWidget& dialog)
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

bool CDialogFit::eventFilter(QObject* pReceiver, QEvent* pEvent)
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
        FitScreen(*pDialog);
    }
    return false;
}
