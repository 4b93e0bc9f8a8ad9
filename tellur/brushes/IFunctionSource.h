#pragma once

class CFunctionContainer;

// Where a brush that is read from a file gets its function. The plug-in object implements it;
// GetPluginPart reaches it.
class IFunctionSource
{
public:
    virtual ~IFunctionSource() = default;

    virtual CFunctionContainer* GetFunctionContainer() = 0; // borrowed, never null
};
