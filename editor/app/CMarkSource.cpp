#include "editor/app/CMarkSource.h"

#include "editor/view/SGroundMark.h"
#include "engine/world/CTexture.h"
#include "host/IPlugin.h"
#include "host/IPluginMark.h"

#include <cstring>

namespace
{

constexpr char SHAPE_NAME[] = "mark_shape";

size_t GetBytes(const IImage& image)
{
    return size_t{image.GetWidth()} * image.GetHeight() * image.GetBitsPerPixel() / 8;
}

bool IsSame(const IImage& a, const IImage& b)
{
    return a.GetFormat() == b.GetFormat() && a.GetWidth() == b.GetWidth() &&
           a.GetHeight() == b.GetHeight() &&
           std::memcmp(a.GetRawData(), b.GetRawData(), GetBytes(a)) == 0;
}

} // namespace

CMarkSource::CMarkSource(IPlugin* pPlugin)
    : m_Plugin(dynamic_cast<IPluginMark*>(pPlugin))
{
}

CMarkSource::~CMarkSource() = default;

void CMarkSource::Fill(bool bSmooth, SGroundMark& mark)
{
    mark.bTool = m_Plugin != nullptr && m_Plugin->GetMark(bSmooth, mark.tool);
    mark.pShape = mark.bTool ? FollowShape(mark.tool.pShape) : nullptr;
    mark.tool.pShape = nullptr; // not ours beyond this call
}

// A brush image is small, so whether it is another one is told by its pixels.
CTexture* CMarkSource::FollowShape(const IImage* pShape)
{
    if (pShape == nullptr || pShape->GetRawData() == nullptr)
    {
        return nullptr;
    }
    if (m_pShape != nullptr && IsSame(m_pShape->GetImage(), *pShape))
    {
        return m_pShape.get();
    }
    std::unique_ptr<IImage> pCopy(IL_CreateImageFromImage(pShape));
    if (pCopy == nullptr)
    {
        return nullptr; // no memory
    }
    if (m_pShape == nullptr)
    {
        m_pShape = std::make_unique<CTexture>(SHAPE_NAME, std::move(pCopy), nullptr);
    }
    else
    {
        m_pShape->Replace(std::move(pCopy), nullptr);
    }
    return m_pShape.get();
}
