#include "tellur/resources/PluginResources.h"

#include "tellur/resources/ResourceTables.h"

const SResourceModule& GetPluginResources()
{
    static const SResourceModule s_Module = {"tellur",
                                             GetMenuTable(),
                                             GetToolBarTable(),
                                             GetStringTable(),
                                             GetCursorTable(),
                                             GetBitmapTable(),
                                             GetDialogTable()};
    return s_Module;
}
