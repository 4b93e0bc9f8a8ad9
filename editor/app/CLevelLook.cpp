#include "editor/app/CLevelLook.h"

#include "editor/app/CEditor.h"
#include "editor/app/CViewArea.h"
#include "editor/view/SRenderSettings.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <utility>

CLevelLook::CLevelLook(CEditor& editor, SRenderSettings& render)
    : m_Editor(editor)
    , m_Render(render)
    , m_LevelViews(editor.GetDocument(), editor.GetAutosave())
{
}

CLevelLook::~CLevelLook()
{
    if (!m_BitmapName.empty())
    {
        m_Editor.GetHost().GetEngine().GetTextures().Release(m_Render.pTypeBitmap);
    }
}

bool CLevelLook::IsBehind() const
{
    const CLevelDocument& document = m_Editor.GetDocument();
    return m_Framed != document.GetGeneration() ||
           m_Render.strDefaultMaterial != document.GetMaterial();
}

void CLevelLook::Follow(CViewArea* pViews)
{
    m_Render.strDefaultMaterial = m_Editor.GetDocument().GetMaterial();
    FollowBitmap();
    if (pViews != nullptr && m_Framed != m_Editor.GetDocument().GetGeneration())
    {
        m_Framed = m_Editor.GetDocument().GetGeneration();
        m_LevelViews.Leave(*pViews);
        m_FramedSize = {};
        FrameOtherSize(pViews);
        m_LevelViews.Enter(*pViews);
    }
}

void CLevelLook::FollowRecovered(CViewArea* pViews, const std::string& strStem)
{
    Follow(pViews);
    m_LevelViews.Recall(strStem);
}

void CLevelLook::FollowBitmap()
{
    const std::string& strBitmap = m_Editor.GetDocument().GetBitmap();
    if (m_BitmapName == strBitmap)
    {
        return;
    }
    CTextureManager& textures = m_Editor.GetHost().GetEngine().GetTextures();
    // A view may draw while the other one is read.
    ITexture* pBefore = std::exchange(m_Render.pTypeBitmap, nullptr);
    if (!m_BitmapName.empty())
    {
        textures.Release(pBefore);
    }
    m_BitmapName = strBitmap;
    m_Render.pTypeBitmap = m_BitmapName.empty() ? nullptr : textures.Load(m_BitmapName.c_str(), 1);
    // A picture that could not be loaded is tried again with the next call.
    m_BitmapName = m_Render.pTypeBitmap != nullptr ? m_BitmapName : "";
}

bool CLevelLook::FrameOtherSize(CViewArea* pViews)
{
    const CTerrain* pTerrain = m_Editor.GetHost().GetEngine().GetCWorld().GetCTerrain();
    const SVec3 size = pTerrain != nullptr ? pTerrain->GetSize() : SVec3();
    const bool bOther = size.x != m_FramedSize.x || size.z != m_FramedSize.z;
    const bool bHigher = size.y != m_FramedSize.y;
    m_FramedSize = size;
    if (bOther && pViews != nullptr)
    {
        pViews->FrameAll();
    }
    return bOther || bHigher;
}
