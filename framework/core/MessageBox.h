#pragma once

#include "framework/core/IFrontEnd.h"
#include "host/Export.h"

// Shows the text and waits for the answer. pszText: null is an empty text. uFlags:
// EMessageBoxFlags.
TELLUR_API EMessageBoxAnswer ShowMessageBox(const char* pszText, uint32_t uFlags);
