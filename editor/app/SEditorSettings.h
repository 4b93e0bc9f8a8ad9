#pragma once

#include "editor/app/CViewInput.h"
#include "editor/view/SRenderSettings.h"

#include <string>

class CEditor;

// What the user has chosen for the editor itself, kept from run to run. Owned by the window.
struct SEditorSettings
{
    static constexpr int MOST_SECONDS = 7200; // between autosaves
    static constexpr int MOST_MEGABYTES = 1 << 20;

    SInputSettings input;
    SRenderSettings render; // of all views; a view adds its own quality and wire frame
    bool bKeyboardNavigation = true;
    int iAutosaveSeconds = 180; // 0: never
    int iUndoMegabytes = 1024;  // that the steps of the history may take together; 0: no limit

    // strFile: an INI file; what is missing keeps its default.
    void Load(const std::string& strFile);
    // False when the file cannot be written.
    bool Save(const std::string& strFile) const;
    // What the editor without its windows needs of them. The views look here themselves.
    void ApplyTo(CEditor& editor) const;
};
