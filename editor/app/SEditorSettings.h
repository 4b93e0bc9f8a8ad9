#pragma once

#include "editor/app/CViewInput.h"
#include "editor/view/SRenderSettings.h"

#include <QStringList>
#include <QVariantMap>

#include <string>

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
    float fEyeHeight = 1.8F;    // of a walk, terrain units
    int iScriptSpeed = 1;       // an EScriptSpeed
    bool bBegun = false;        // there was a level once, and a brush for it
    bool bStrokeMade = false;   // by a person
    std::string strTool;        // the function of the one that was at hand last; empty: none
    int iUndoMegabytes = 1024;  // that the steps of the history may take together; 0: no limit

    // By keys of the INI file; what is missing keeps its default. Returns the keys whose values are
    // none, which keep it too.
    QStringList Load(const QVariantMap& values);
    void Store(QVariantMap& values) const;
    // What the editor without its windows needs of them. The views look here themselves.
    void ApplyTo(CEditor& editor) const;

private:
    void Clamp();
};
