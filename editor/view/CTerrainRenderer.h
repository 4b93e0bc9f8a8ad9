#pragma once

#include "editor/view/SRenderSettings.h"
#include "editor/view/SRenderStatistics.h"

#include <memory>
#include <string>

class CEngineHost;
class CTerrainCopies;
struct SViewProjection;

// Draws the terrain of an engine and what the modes lay over it: brush preview, mask, material,
// debug lines. Shares the copies of heights and normals on the graphics card with the other views
// and brings only what changed up to date. Owned by one view; knows no window. Between Initialize
// and Release it belongs to one OpenGL 3.3 core context, which its caller makes current around
// every operation.
class CTerrainRenderer
{
public:
    // pCopies: shared with renderers whose contexts share their objects; never null.
    explicit CTerrainRenderer(std::shared_ptr<CTerrainCopies> pCopies);

    // The context is current, or Release was called before.
    ~CTerrainRenderer();
    CTerrainRenderer(const CTerrainRenderer&) = delete;
    CTerrainRenderer& operator=(const CTerrainRenderer&) = delete;

    // Once per context. False, with the reason as one line in strFault, when the context is too old
    // or refuses a shader.
    bool Initialize(std::string& strFault);

    // Gives everything back to the context, before that goes away. Initialize may follow.
    void Release();

    // Draws one frame into the framebuffer that is bound, sky included; without a level only the
    // sky. Shows the debug lines and the projected texture that the engine has now: the caller
    // begins the engine's frame and lets the mode draw before. False, with one logged line per
    // level, when the card has no room for the terrain; the sky is drawn then.
    bool Render(const SViewProjection& view, CEngineHost& engine, const SRenderSettings& settings);

    bool IsSoftware() const { return m_bSoftware; } // the processor draws; after Initialize

    const SRenderStatistics& GetStatistics() const { return m_Statistics; } // of the last frame

private:
    struct SParts; // what needs the context

    SRenderStatistics m_Statistics;
    std::shared_ptr<CTerrainCopies> m_Copies;
    std::unique_ptr<SParts> m_Parts; // null outside Initialize and Release
    bool m_bSoftware = false;
};
