#include "editor/app/CCursorNote.h"

#include <QEvent>

#include <algorithm>

namespace
{

constexpr int SHOWN_MS = 1200;
constexpr int DISTANCE = 18; // from the cursor

} // namespace

CCursorNote::CCursorNote(QWidget* pView)
    : QLabel(pView)
{
    setObjectName("cursor-note");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setStyleSheet("background: rgba(24, 26, 30, 205); color: white; border-radius: 3px;"
                  "padding: 2px 6px;");
    m_Timer.setSingleShot(true);
    m_Timer.setInterval(SHOWN_MS);
    m_Timer.callOnTimeout(this,
                          [this]
                          {
                              m_Value.clear();
                              Refresh();
                          });
    pView->installEventFilter(this);
    hide();
}

bool CCursorNote::eventFilter(QObject* /*pView*/, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Resize && isVisible())
    {
        Refresh();
    }
    return false;
}

void CCursorNote::ShowValue(const QString& strText)
{
    m_Value = strText;
    m_Timer.start();
    Refresh();
}

void CCursorNote::SetState(const QString& strText)
{
    if (m_State != strText)
    {
        m_State = strText;
        Refresh();
    }
}

void CCursorNote::FollowCursor(const QPoint& cursor)
{
    m_Cursor = cursor;
    if (isVisible())
    {
        Refresh();
    }
}

void CCursorNote::Refresh()
{
    const bool bBoth = !m_State.isEmpty() && !m_Value.isEmpty();
    const QString strText = m_State + (bBoth ? "  " : "") + m_Value;
    if (strText.isEmpty())
    {
        hide();
        return;
    }
    setText(strText);
    setWordWrap(false);
    const int iMost = parentWidget()->width();
    if (sizeHint().width() > iMost) // a narrow view has its lines broken
    {
        setWordWrap(true);
        resize(iMost, heightForWidth(iMost));
    }
    else
    {
        adjustSize();
    }
    const QSize room = parentWidget()->size() - size();
    move(std::clamp(m_Cursor.x() + DISTANCE, 0, std::max(0, room.width())),
         std::clamp(m_Cursor.y() + DISTANCE, 0, std::max(0, room.height())));
    show();
}
