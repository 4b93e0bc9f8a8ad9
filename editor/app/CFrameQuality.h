#pragma once

#include <QTimer>

#include <functional>

// How finely the frames of a view are drawn: coarser after slow ones, and once more in full when
// nothing moves any longer. Owned by the view. UI thread.
class CFrameQuality
{
public:
    explicit CFrameQuality(std::function<void()> requestFrame);

    // Of the next frame, as SRenderSettings::fQuality.
    float Get() const { return m_bRefining ? 1.0F : m_Quality; }

    void Adapt(double fMilliseconds); // that the last frame took; it showed all of the terrain

private:
    std::function<void()> m_RequestFrame;
    QTimer m_RefineTimer;
    bool m_bRefining = false; // the next frame is the one in full
    float m_Quality = 1.0F;
};
