#pragma once

#include "framework/core/CResourceScope.h"
#include "framework/core/Resources.h"
#include "host/Export.h"

#include <string>

// Where resources are looked up: in the current module first, then in the registered ones in the
// order of registration. UI thread.

// pModule: borrowed until it is unregistered, which a library does before its code goes. Null and a
// module that is registered already are ignored.
TELLUR_API void RegisterResourceModule(const SResourceModule* pModule);

// Takes a module off. It is current nowhere from then on, not even where a scope would restore it,
// and its cursor is not shown any more.
TELLUR_API void UnregisterResourceModule(const SResourceModule* pModule);

TELLUR_API const SResourceModule* GetCurrentResourceModule(); // null when there is none

// Each finds a resource by its id and answers null when no module has one. What is found belongs
// to the module, and is good as long as the code of that is loaded.
TELLUR_API const SMenuResource* FindMenuResource(uint32_t uId);
TELLUR_API const SToolBarResource* FindToolBarResource(uint32_t uId);
TELLUR_API const SCursorResource* FindCursorResource(uint32_t uId);
TELLUR_API const SBitmapResource* FindBitmapResource(uint32_t uId);
TELLUR_API const SDialogResource* FindDialogResource(uint32_t uId);

// Copies a text. Answers false and leaves strText as it is when no module has one of that id.
TELLUR_API bool LoadStringResource(uint32_t uId, std::string& strText);
