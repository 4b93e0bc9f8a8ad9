#include "editor/app/CStartPage.h"

#include "editor/core/Words.h"

#include <QApplication>
#include <QCommandLinkButton>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include <utility>

namespace
{

constexpr int COLUMN_CHARACTERS = 42;
constexpr int FOLDER_CHARACTERS = 22; // beside a picture
constexpr int SPACING = 6;
constexpr int MARGIN = 16;
constexpr int FOCUS_WIDTH = 2;
constexpr float TITLE_FACTOR = 1.6F;

// Of a folder; the middle of a long one says least.
QString Shorten(const QWidget& widget, const QString& strText)
{
    const QFontMetrics metrics = widget.fontMetrics();
    return metrics.elidedText(
        strText, Qt::ElideMiddle, metrics.averageCharWidth() * FOLDER_CHARACTERS);
}

// Styles show hardly or not at all which of such buttons has the keyboard.
class CStartButton : public QCommandLinkButton
{
public:
    using QCommandLinkButton::QCommandLinkButton;

protected:
    void paintEvent(QPaintEvent* pEvent) override
    {
        QCommandLinkButton::paintEvent(pEvent);
        if (hasFocus())
        {
            QPainter painter(this);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(palette().highlight(), FOCUS_WIDTH));
            const qreal fInset = FOCUS_WIDTH * 0.5;
            painter.drawRoundedRect(QRectF(rect()).adjusted(fInset, fInset, -fInset, -fInset),
                                    SPACING * 0.5,
                                    SPACING * 0.5);
        }
    }
};

QLabel* MakeTitle(const QString& strText, QWidget* pParent)
{
    auto* pLabel = new QLabel(strText, pParent);
    QFont font = pLabel->font();
    font.setPointSizeF(font.pointSizeF() * TITLE_FACTOR);
    pLabel->setFont(font);
    return pLabel;
}

} // namespace

CStartPage::CStartPage(QWidget& views, const std::vector<SStartEntry>& entries)
    : QWidget(views.window())
    , m_Views(views)
    , m_pRecent(new QVBoxLayout)
    , m_pNoRecent(new QLabel(Words("What you open or save is listed here."), this))
{
    setObjectName("start-page");
    setAutoFillBackground(true);
    auto* pArea = new QScrollArea(this);
    auto* pGround = new QWidget(pArea);
    auto* pBegin = new QVBoxLayout;
    pBegin->setSpacing(SPACING);
    pBegin->addWidget(MakeTitle(Words("Begin"), pGround));
    for (const SStartEntry& entry : entries)
    {
        QCommandLinkButton* pButton = AddEntry(*pBegin, entry);
        m_pFirst = m_pFirst != nullptr ? m_pFirst : pButton;
        m_pLast = pButton;
    }
    pBegin->addStretch(1);
    m_pRecent->setSpacing(SPACING);
    m_pRecent->addWidget(MakeTitle(Words("Recent levels"), pGround));
    m_pRecent->addWidget(m_pNoRecent);
    m_pRecent->addStretch(1);
    auto* pColumns = new QHBoxLayout(pGround);
    pColumns->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    pColumns->setSpacing(2 * MARGIN);
    pColumns->addStretch(1);
    pColumns->addLayout(pBegin);
    pColumns->addLayout(m_pRecent);
    pColumns->addStretch(1);
    pArea->setWidget(pGround);
    pArea->setWidgetResizable(true);
    pArea->setFrameShape(QFrame::NoFrame);
    pArea->setFocusPolicy(Qt::NoFocus);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pArea);
    setFocusPolicy(Qt::StrongFocus);
    hide();
}

QCommandLinkButton* CStartPage::AddEntry(QVBoxLayout& column, const SStartEntry& entry)
{
    const QString strText = entry.strName.isEmpty() ? Shorten(*this, entry.strText) : entry.strText;
    auto* pButton = new CStartButton(entry.strTitle, strText, this);
    pButton->setObjectName(entry.strName);
    pButton->setAccessibleName(entry.strTitle);
    pButton->setAccessibleDescription(entry.strText);
    pButton->setToolTip(entry.strName.isEmpty() ? entry.strText : QString());
    pButton->setAutoDefault(true); // Enter presses it
    pButton->setMinimumWidth(fontMetrics().averageCharWidth() * COLUMN_CHARACTERS);
    if (!entry.picture.isNull())
    {
        pButton->setIcon(entry.picture);
        pButton->setIconSize(entry.picture.size() / entry.picture.devicePixelRatio());
    }
    connect(pButton, &QCommandLinkButton::clicked, this, [run = entry.run] { run(); });
    column.addWidget(pButton);
    return pButton;
}

void CStartPage::ShowRecent(const std::vector<SStartEntry>& levels)
{
    for (QCommandLinkButton* pButton : std::exchange(m_Recent, {}))
    {
        pButton->hide();
        pButton->deleteLater(); // it may be the one that was pressed
    }
    m_pNoRecent->setVisible(levels.empty());
    QWidget* pBefore = m_pLast;
    for (const SStartEntry& level : levels)
    {
        QCommandLinkButton* pButton = AddEntry(*m_pRecent, level);
        // Before the stretch at the end.
        m_pRecent->insertWidget(m_pRecent->count() - 2, pButton);
        m_Recent.push_back(pButton);
        setTabOrder(pBefore, pButton);
        pBefore = pButton;
    }
}

void CStartPage::Begin()
{
    for (QWidget* pWatched = &m_Views; pWatched != parentWidget();
         pWatched = pWatched->parentWidget())
    {
        pWatched->installEventFilter(this); // the views may move along with what they lie in
    }
    Follow();
    show();
    raise();
    m_pFirst->setFocus();
}

void CStartPage::End()
{
    for (QWidget* pWatched = &m_Views; pWatched != parentWidget();
         pWatched = pWatched->parentWidget())
    {
        pWatched->removeEventFilter(this);
    }
    hide();
    m_bSecondClick = true;
    qApp->installEventFilter(this);
}

void CStartPage::Follow()
{
    setGeometry(QRect(m_Views.mapTo(parentWidget(), QPoint(0, 0)), m_Views.size()));
}

bool CStartPage::eventFilter(QObject*, QEvent* pEvent)
{
    const QEvent::Type eType = pEvent->type();
    if (!isHidden() && (eType == QEvent::Resize || eType == QEvent::Move))
    {
        Follow();
    }
    const bool bSecond = eType == QEvent::MouseButtonDblClick;
    if (m_bSecondClick && (bSecond || eType == QEvent::MouseButtonPress))
    {
        // Who clicks twice wants to open a level, and not to change it.
        m_bSecondClick = false;
        qApp->removeEventFilter(this);
        return bSecond;
    }
    return false;
}

void CStartPage::focusInEvent(QFocusEvent* pEvent)
{
    QWidget::focusInEvent(pEvent);
    m_pFirst->setFocus();
}
