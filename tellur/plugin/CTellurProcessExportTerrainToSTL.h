#pragma once

#include "tellur/plugin/CEditorAction.h"

// Exports the whole terrain to an STL file that the user names.
class CTellurProcessExportTerrainToSTL : public CEditorProcess
{
public:
    static const CRTTI s_RTTI;

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    IEditorAction* Clone() const override { return new CTellurProcessExportTerrainToSTL(*this); }

    const char* GetName() const override { return "Export terrain to STL format"; }

    bool CanExecute(uintptr_t, uintptr_t, uintptr_t) override { return true; }

    bool Execute() override; // false without a terrain and when cancelled
};
