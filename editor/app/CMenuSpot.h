#pragma once

#include "host/HostTypes.h"

#include <optional>

class CViewArea;

// The ground that a command of the views means: under the cursor, or under the place of the context
// menu while one is open, since the cursor is over the menu then. Owned by the menus.
class CMenuSpot
{
public:
    explicit CMenuSpot(CViewArea& views); // borrowed

    void Set(ViewId view); // of the view whose menu opens; NO_VIEW: it is closed

    // False, and a word at the cursor, where there is no ground.
    bool Pick(SVec3& hit) const;

private:
    CViewArea& m_Views;
    std::optional<SVec3> m_Spot;
};
