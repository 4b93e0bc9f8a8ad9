#include "editor/app/CFaultBar.h"

#include "editor/core/Words.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

CFaultBar::CFaultBar(QMainWindow& window, std::function<void()> showMessages)
    : COverlayBar(window, Qt::BottomEdge, "fault-bar")
    , m_pText(new QLabel(this))
{
    auto* pSign = new QLabel(this);
    const int iSize = style()->pixelMetric(QStyle::PM_SmallIconSize);
    pSign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iSize));
    setAccessibleName(Words("Last fault"));
    m_pText->setObjectName("fault-text");
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pText->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* pMessages = new QToolButton(this);
    pMessages->setObjectName("fault-messages");
    pMessages->setText(Words("Messages"));
    pMessages->setToolTip(Words("Shows the list of all messages"));
    auto* pClose = new QToolButton(this);
    pClose->setObjectName("fault-close");
    pClose->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    pClose->setAutoRaise(true);
    pClose->setToolTip(Words("Closes this line"));
    pClose->setAccessibleName(Words("Close"));
    for (QToolButton* pButton : {pMessages, pClose})
    {
        pButton->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard with the view
    }
    connect(pClose, &QToolButton::clicked, this, [this] { Forget(); });
    connect(pMessages,
            &QToolButton::clicked,
            this,
            [this, showMessages = std::move(showMessages)]
            {
                Forget();
                showMessages();
            });
    GetRow().addWidget(pSign);
    GetRow().addWidget(m_pText, 1);
    GetRow().addWidget(pMessages);
    GetRow().addWidget(pClose);
}

void CFaultBar::ShowFault(const QString& strFault)
{
    ++m_nFaults;
    m_Fault =
        m_nFaults > 1 ? QString(Words("%1 (%2 faults)")).arg(strFault).arg(m_nFaults) : strFault;
    m_pText->setToolTip(m_Fault);
    m_pText->setAccessibleName(m_Fault);
    show();
    ElideText();
}

void CFaultBar::Forget()
{
    m_nFaults = 0;
    hide();
}

void CFaultBar::resizeEvent(QResizeEvent* pEvent)
{
    COverlayBar::resizeEvent(pEvent);
    ElideText();
}

void CFaultBar::ElideText()
{
    GetRow().activate(); // the label has its width of now
    m_pText->setText(m_pText->fontMetrics().elidedText(m_Fault, Qt::ElideRight, m_pText->width()));
}
