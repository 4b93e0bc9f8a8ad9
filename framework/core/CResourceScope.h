#pragma once

#include "host/Export.h"

struct SResourceModule;

// Makes a module the current one while it lives and restores the one before on every way out. A
// local object, ended in the reverse order of its making.
class TELLUR_API CResourceScope
{
public:
    explicit CResourceScope(const SResourceModule* pModule); // borrowed, null: no current module
    ~CResourceScope();
    CResourceScope(const CResourceScope&) = delete;
    CResourceScope& operator=(const CResourceScope&) = delete;

private:
    friend void UnregisterResourceModule(const SResourceModule* pModule);

    static void Forget(const SResourceModule* pModule);

    const SResourceModule* m_Previous;
    CResourceScope* m_Outer;
};
