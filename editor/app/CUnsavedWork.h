#pragma once

#include "editor/core/IModeGuard.h"

class CDocumentQuestions;
class CEditor;
class CEditorFace;

// Asks about what the plug-in holds that is in no file yet: strokes on a bitmap, brushes that were
// added. The guard of the modes while it lives; a script that is played is not asked. Owned by the
// window; everything given is borrowed. UI thread.
class CUnsavedWork : public IModeGuard
{
public:
    CUnsavedWork(CEditor& editor, const CEditorFace& face, CDocumentQuestions& questions);
    ~CUnsavedWork() override;
    CUnsavedWork(const CUnsavedWork&) = delete;
    CUnsavedWork& operator=(const CUnsavedWork&) = delete;

    // Asks, before the program ends, about strokes and brushes that are not saved. False: the
    // person wants to go on.
    bool MayLeave();

    // Before the program ends with nobody to ask: saves the brushes, if that is possible.
    void Leave();

    // IModeGuard
    bool MayActivate(int32_t iModeId) override;
    void OnActivated(int32_t iModeId) override;

private:
    bool MayDropPainting();
    bool MayDropBrushes();

    CEditor& m_Editor;
    const CEditorFace& m_Face;
    CDocumentQuestions& m_Questions;
};
