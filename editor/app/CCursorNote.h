#pragma once

#include <QLabel>
#include <QTimer>

// A few words beside the cursor of a view: a value that has just changed, for a moment, or what the
// keys that are held do to the stroke, as long as they are held. Owned by the view.
class CCursorNote : public QLabel
{
public:
    explicit CCursorNote(QWidget* pView);

    void ShowValue(const QString& strText);  // goes by itself
    void SetState(const QString& strText);   // empty: none
    void FollowCursor(const QPoint& cursor); // in the view

    bool eventFilter(QObject* pView, QEvent* pEvent) override;

private:
    void Refresh();

    QTimer m_Timer;
    QPoint m_Cursor;
    QString m_Value;
    QString m_State;
};
