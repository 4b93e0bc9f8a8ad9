#include "editor/view/SViewLook.h"

const char* GetViewName(EViewKind eKind)
{
    constexpr const char* NAMES[] = {"Perspective", "Top", "Front", "Side"};
    return NAMES[static_cast<int>(eKind)];
}

bool FindViewKind(const std::string& strName, EViewKind& eKind)
{
    for (const EViewKind eTried : VIEW_KINDS)
    {
        if (strName == GetViewName(eTried))
        {
            eKind = eTried;
            return true;
        }
    }
    return false;
}
