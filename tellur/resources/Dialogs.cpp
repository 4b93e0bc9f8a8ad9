#include "tellur/resources/DialogTables.h"
#include "tellur/resources/ResourceTables.h"

std::span<const SDialogResource> GetDialogTable()
{
    static const SDialogResource s_Dialogs[] = {
        GetPanelDialog(), GetDrawDialog(), GetColorDialog()};
    return s_Dialogs;
}
