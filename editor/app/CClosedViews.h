#pragma once

#include "editor/view/SViewLook.h"

#include <utility>
#include <vector>

// Where views looked from that were closed, so that the next one of the kind looks from there. Of
// the level that is open. Owned by the area of the views.
class CClosedViews
{
public:
    void Add(const SViewLook& look); // one that only shows the whole terrain need not be kept
    // The last one of the kind, which is kept no longer. False when there is none.
    bool Take(EViewKind eKind, SViewLook& look);

    void Set(std::vector<SViewLook> looks) { m_Looks = std::move(looks); }

    const std::vector<SViewLook>& GetLooks() const { return m_Looks; }

private:
    std::vector<SViewLook> m_Looks; // the last one behind
};
