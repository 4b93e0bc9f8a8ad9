#pragma once

#include "editor/app/CViewInput.h"
#include "editor/view/SRenderSettings.h"

#include <QStringList>
#include <QVariantMap>

class CEditor;

// What the user has chosen for the editor itself, kept from run to run. Owned by the window.
struct SEditorSettings
{
    static constexpr int MOST_SECONDS = 7200; // between autosaves
    static constexpr int MOST_MEGABYTES = 1 << 20;

    SInputSettings input;
    SRenderSettings render;   // of all views; a view adds its own quality and wire frame
    bool bSmoothEdges = true; // of the views that a card draws
    bool bKeyboardNavigation = true;
    int iAutosaveSeconds = 180; // 0: never
    int iUndoMegabytes = 1024;  // that the steps of the history may take together; 0: no limit

    // By keys of the INI file; what is missing keeps its default. Returns the keys whose values are
    // none, which keep it too.
    QStringList Load(const QVariantMap& values);
    void Store(QVariantMap& values) const;
    // What the editor without its windows needs of them. The views look here themselves.
    void ApplyTo(CEditor& editor) const;
};
