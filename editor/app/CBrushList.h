#pragma once

#include <QListWidget>
#include <QTimer>

#include <functional>

// The brushes of the library as pictures with their names below, in rows as wide as the list. Knows
// nothing of brushes: it says what a person wants. Its actions are its keys, before any of the
// window's, and its context menu. Owned by its dock.
class CBrushList : public QListWidget
{
public:
    struct SEvents
    {
        // Another name was typed for a row. Called by the editor while it goes, which a message box
        // must not hinder; a stroke that ends the typing has not begun yet.
        std::function<void(int, const QString&)> onRename;
        // A row was dropped, to be the second one afterwards. Called from the event loop.
        std::function<void(int, int)> onMove;
    };

    static constexpr int FUNCTION_ROLE = Qt::UserRole;  // what stands below the name
    static constexpr int FAULT_ROLE = Qt::UserRole + 1; // what is wrong with the picture

    CBrushList(QWidget* pParent, SEvents events);

    // Hides the rows that have the text neither in name, function nor fault; empty shows all.
    void Filter(const QString& strText);
    void Select(int iRow); // that row alone, which is then the current one
    // The next row that is shown, iStep -1 or 1; -1 when there is none.
    int FindShown(int iFrom, int iStep) const;

    int GetFirstWidth() const; // of some columns

protected:
    bool event(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void startDrag(Qt::DropActions actions) override;
    void dragMoveEvent(QDragMoveEvent* pEvent) override;
    void dragLeaveEvent(QDragLeaveEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    Qt::DropActions supportedDropActions() const override;

private:
    // Beside which of the rows that are shown a drop is meant, and on which side.
    struct SDropPlace
    {
        int iRow = -1; // -1: none
        bool bBehind = false;
    };

    QAction* FindAction(const QKeyEvent& event) const;
    SDropPlace FindDropPlace(const QPoint& at) const;
    void MarkDropPlace(const SDropPlace& place);

    SEvents m_Events;
    int m_iDragged = -1;    // row; -1 while none is
    SDropPlace m_DropPlace; // where a drag is now
    int m_iFrom = 0;        // of what was dropped
    int m_iTo = 0;
    QTimer m_DropTimer; // until the drag is over
};
