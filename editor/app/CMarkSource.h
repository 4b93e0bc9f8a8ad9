#pragma once

#include <memory>

class CTexture;
class IImage;
class IPlugin;
class IPluginMark;
struct SGroundMark;

// Asks the plug-in what the tool at hand would do, for the mark in the views, and keeps the picture
// of its shape for them. Owned by the area of the views.
class CMarkSource
{
public:
    explicit CMarkSource(IPlugin* pPlugin); // borrowed, null for none
    ~CMarkSource();

    // For one frame. bSmooth: a press would smooth. What it says of the tool is left alone where
    // no tool is at hand, or the plug-in does not tell. The shape is borrowed until the next call.
    void Fill(bool bSmooth, SGroundMark& mark);

private:
    CTexture* FollowShape(const IImage* pShape);

    IPluginMark* m_Plugin;
    std::unique_ptr<CTexture> m_pShape; // a copy, null before the first one
};
