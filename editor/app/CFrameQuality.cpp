#include "editor/app/CFrameQuality.h"

#include "editor/view/SRenderSettings.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr double SLOW_MS = 40.0; // a frame that takes longer is drawn coarser next time
constexpr double FAST_MS = 18.0;
constexpr float COARSER = 0.8F;
constexpr float FINER = 1.1F;
constexpr int REFINE_MS = 300;

} // namespace

CFrameQuality::CFrameQuality(std::function<void()> requestFrame)
    : m_RequestFrame(std::move(requestFrame))
{
    m_RefineTimer.setSingleShot(true);
    m_RefineTimer.setInterval(REFINE_MS);
    m_RefineTimer.callOnTimeout(
        [this]
        {
            m_bRefining = true;
            m_RequestFrame();
        });
}

void CFrameQuality::Adapt(double fMilliseconds)
{
    if (m_bRefining)
    {
        m_bRefining = false; // in full, and as slow as it may be
        return;
    }
    if (fMilliseconds > SLOW_MS)
    {
        m_Quality = std::max(SRenderSettings::LEAST_QUALITY, m_Quality * COARSER);
    }
    else if (fMilliseconds < FAST_MS)
    {
        m_Quality = std::min(1.0F, m_Quality * FINER);
    }
    if (m_Quality < 1.0F)
    {
        // Started anew by each coarse frame, it runs out only when nothing moves any longer.
        m_RefineTimer.start();
    }
}
