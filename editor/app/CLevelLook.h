#pragma once

#include "editor/app/CLevelViews.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <string>

class CEditor;
class CViewArea;
struct SRenderSettings;

// Keeps what the views show in step with the open level: its material, the picture that they drape
// over the terrain, and where they look at it from. Owned by the window, gone after the views,
// which use the picture. UI thread.
class CLevelLook
{
public:
    // Borrowed. render: of all views, changed in place.
    CLevelLook(CEditor& editor, SRenderSettings& render);
    ~CLevelLook();
    CLevelLook(const CLevelLook&) = delete;
    CLevelLook& operator=(const CLevelLook&) = delete;

    // To be called when another level is open, or this one names another material or bitmap.
    // pViews: null as long as there are none; the level is then shown at the first call with them,
    // as it was left, or whole.
    void Follow(CViewArea* pViews);

    // Whether Follow has not been called since: a level that is opened without the menus is told of
    // before it is known which files it has.
    bool IsBehind() const;
    // Frames the terrain when it lies elsewhere now, which only another extent does: one of another
    // resolution is where it was. True when its size, the height too, is another one.
    bool FrameOtherSize(CViewArea* pViews);

    // As Follow, for a level that came back out of the autosave of that stem.
    void FollowRecovered(CViewArea* pViews, const std::string& strStem);

    CLevelViews& GetLevelViews() { return m_LevelViews; }

private:
    void FollowBitmap();

    CEditor& m_Editor;
    SRenderSettings& m_Render;
    CLevelViews m_LevelViews;
    std::string m_BitmapName; // of the texture in m_Render; empty for none
    uint64_t m_Framed = 0;    // generation of the document that the views have framed
    SVec3 m_FramedSize;       // of its terrain
};
