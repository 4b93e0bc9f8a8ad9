#pragma once

#include "host/EditorHost.h"

#include <string>

// Asks for one of the draw dialog's files, beginning in the folder of data. pszExtension: the
// default one, null for none. Empty when cancelled and without a host.
std::string BrowseForDrawFile(EFileDialog eKind,
                              const char* pszExtension,
                              const std::string& strInitial,
                              const char* pszFilter);
