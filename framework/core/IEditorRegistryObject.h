#pragma once

#include "host/Export.h"

// An object with settings of its own in the registry. Its owner decides when they are written: a
// window, for example, asks the controls inside it before it closes. UI thread.
class TELLUR_API IEditorRegistryObject
{
public:
    virtual ~IEditorRegistryObject() = default;

    // Writes the object's settings. A failure is not told of; the settings stay as they were then.
    virtual void SaveToRegistry() = 0;
};
