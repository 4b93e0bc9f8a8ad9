#pragma once

#include "editor/core/IHostObserver.h"

#include <functional>

class CCursorNote;
class CEditor;

// Says at the cursor how large the brush is now, when an action of the plug-in has changed it: by a
// key, and also where the panel is closed. Observes the host while it lives. Owned by the window.
// UI thread.
class CExtentNote : public IHostObserver
{
public:
    // editor: borrowed. findNote: of the view in which a person works, null without one.
    CExtentNote(CEditor& editor, std::function<CCursorNote*()> findNote);
    ~CExtentNote() override;
    CExtentNote(const CExtentNote&) = delete;
    CExtentNote& operator=(const CExtentNote&) = delete;

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

private:
    CEditor& m_Editor;
    std::function<CCursorNote*()> m_FindNote;
    float m_Before = 0.0F; // extent before the event, terrain units; 0: no brush was up
};
