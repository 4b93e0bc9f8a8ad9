#pragma once

// Who shows the fields of the current function, and has to be told when a stroke changes them by
// itself. The plug-in object implements it; GetPluginPart reaches it.
class IFieldsWatcher
{
public:
    virtual ~IFieldsWatcher() = default;

    virtual void OnFieldsChanged() = 0;
};
