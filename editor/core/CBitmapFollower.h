#pragma once

#include "editor/core/IGroundFollower.h"

#include <string>

class CEditorHost;
class CLevelDocument;
class IImage;

// Has the level's terrain-type bitmap go along with the ground. The file is never changed, since
// other levels may name it: the moved picture is a new PNG beside the level, with the strokes that
// the plug-in has not saved yet, and undo names the old file again. Both files stay. The mode that
// paints is left, as it shows the bitmap where it was; the draw dialog then names the file that the
// level does, unless it keeps strokes that are not saved. A bitmap whose file is gone keeps its
// name and holds nothing up. Owned by the program, after the document. UI thread.
class CBitmapFollower : public IGroundFollower
{
public:
    CBitmapFollower(CEditorHost& host, CLevelDocument& document); // borrowed
    ~CBitmapFollower() override;
    CBitmapFollower(const CBitmapFollower&) = delete;
    CBitmapFollower& operator=(const CBitmapFollower&) = delete;

    // IGroundFollower
    bool Follow(const SGroundAct& act,
                bool bRepeated,
                std::unique_ptr<IGroundCompanion>& pCompanion) override;
    void OnDone(bool bDone) override;

private:
    bool IsPainted() const;
    std::string FindNewName() const;
    bool Make(const SGroundAct& act);

    CEditorHost& m_Host;
    CLevelDocument& m_Document;
    std::string m_Made; // for the act under way; empty: nothing
};
