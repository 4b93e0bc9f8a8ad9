#include "editor/view/SViewLook.h"

#include "editor/core/Words.h"

const char* GetViewName(EViewKind eKind)
{
    constexpr const char* NAMES[] = {
        TextKey("Perspective"), TextKey("Top"), TextKey("Front"), TextKey("Side")};
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
