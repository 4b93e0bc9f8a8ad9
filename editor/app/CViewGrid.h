#pragma once

#include <QSplitter>

#include <vector>

// Where views stand: one, or two beside each other; more in two rows, whose borders are one line
// where both have as many. A person moves the borders between them. One may have the whole room
// for a while.
class CViewGrid : public QSplitter
{
public:
    explicit CViewGrid(QWidget* pParent);

    // Places them anew, all alike and all shown. They become children of the rows.
    void Place(const std::vector<QWidget*>& cells);

    void ShowAlone(QWidget* pCell); // one of those; null: all again

    bool IsOneAlone() const { return m_bAlone; }

    // Heights of the rows, then widths of what stands in each of them; shares when they are set. As
    // they are while all are shown.
    QList<int> GetShares() const;
    // False, and nothing happens, for as many as this grid does not have.
    bool SetShares(const QList<int>& shares);

private:
    void FollowRow(const QSplitter& moved);

    QSplitter* m_Rows[2] = {}; // the splitter's; the lower one may be empty, and is hidden then
    QList<int> m_Shares;       // while one is shown alone
    bool m_bAlone = false;
};
