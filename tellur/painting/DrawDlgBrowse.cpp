#include "tellur/painting/DrawDlgBrowse.h"

#include "tellur/context/PluginContext.h"

std::string BrowseForDrawFile(EFileDialog eKind,
                              const char* pszExtension,
                              const std::string& strInitial,
                              const char* pszFilter)
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    return pHost != nullptr
               ? pHost->BrowseForFile(eKind, pszExtension, strInitial.c_str(), "data", pszFilter)
               : std::string();
}
