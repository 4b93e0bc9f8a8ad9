#include "editor/app/CFormScroll.h"

#include <QDialog>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>

namespace
{

constexpr QSize LEAST = {240, 120}; // of what is seen at once, Qt's pixels

} // namespace

CFormScroll::CFormScroll(QWidget* pParent, QWidget* pContent)
    : QScrollArea(pParent)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // the fields are stops of the keyboard, and no more
    setWidgetResizable(true);
    setWidget(pContent);
}

QSize CFormScroll::sizeHint() const
{
    // With room for the bar, so that one across does not follow from one down.
    return widget()->sizeHint() + QSize(verticalScrollBar()->sizeHint().width(), 0);
}

QSize CFormScroll::minimumSizeHint() const
{
    return LEAST.boundedTo(widget()->minimumSizeHint());
}

void FitDialogToScreen(QDialog& dialog)
{
    // Only what has its style knows how large it is.
    for (QWidget* pChild : dialog.findChildren<QWidget*>())
    {
        pChild->ensurePolished();
        pChild->updateGeometry();
    }
    // The window's own frame and title, which are not known before it is shown.
    const int iTitle = dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &dialog);
    const QSize room = dialog.screen()->availableSize() - QSize(iTitle / 2, iTitle * 3 / 2);
    const QSize wanted = dialog.sizeHint().boundedTo(room);
    dialog.resize(dialog.isVisible() ? dialog.size().expandedTo(wanted) : wanted);
}
