#pragma once

#include <QStringList>
#include <QVariantMap>

#include <cstddef>

class CViewArea;

// How many views there are, and of which kinds: by choice of the menu, and as they were left.
// Borrows the views. Owned by the layout of the window. UI thread.
class CViewArrangement
{
public:
    explicit CViewArrangement(CViewArea& views);

    // Opens views of kinds that are not there yet, or closes the last ones and keeps the active
    // one. All of them are shown.
    void SetCount(size_t nViews);
    bool HasCount(size_t nViews) const;
    void Reset(); // to the views of a first window

    // Opens the views that were open, or those of a first window. As SIniReader does, adds the
    // keys whose values are none.
    void Restore(const QVariantMap& values, QStringList& wrong);
    void Store(QVariantMap& values) const;

private:
    bool RestoreViews(const QVariantMap& values);
    bool RestoreShares(const QVariantMap& values);

    CViewArea& m_Views;
};
