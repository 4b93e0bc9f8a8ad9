#include "tellur/brushes/CTellurBrush.h"

#include "host/Image.h"
#include "host/Log.h"
#include "host/ShapeSampling.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/TurnedShape.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/ITellurFunction.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

// As the host wants the points that come; plain where nobody is there to want anything.
const SPointForm& GetPointForm()
{
    static const SPointForm s_Plain;
    const PluginContext* pContext = GetPluginContext();
    return pContext != nullptr ? pContext->GetPointForm() : s_Plain;
}

} // namespace

CTellurBrush::CTellurBrush() = default;

CTellurBrush::~CTellurBrush()
{
    ReleaseMask();
}

void CTellurBrush::SetName(const char* pszName)
{
    m_Name = pszName != nullptr ? std::optional<std::string>(pszName) : std::nullopt;
}

const char* CTellurBrush::GetName() const
{
    return m_Name ? m_Name->c_str() : nullptr;
}

CTellurBrush* CTellurBrush::Clone() const
{
    auto pClone = std::make_unique<CTellurBrush>();
    pClone->m_PowerModifier = m_PowerModifier;
    pClone->m_UsageDensity = m_UsageDensity;
    pClone->m_Extent = m_Extent;
    pClone->m_FadeFactor = m_FadeFactor;
    pClone->m_Hardness = m_Hardness;
    pClone->m_VerticalDistance = m_VerticalDistance;
    pClone->m_Name = m_Name;
    if (m_Function != nullptr)
    {
        pClone->m_Function.reset(m_Function->Clone());
    }
    if (m_Bitmap != nullptr)
    {
        pClone->m_Bitmap.reset(m_Bitmap->Clone());
    }
    pClone->m_BitmapChanged = true;
    if (!m_MaskPath.empty())
    {
        pClone->SetMask(m_MaskPath.c_str()); // a copy loads and registers its own texture
    }
    pClone->m_MaskEnabled = m_MaskEnabled;
    return pClone.release();
}

int CTellurBrush::Start(ITerrainModification* pModification,
                        ViewId view,
                        uint32_t uFlags,
                        ViewPoint point)
{
    if (m_Function == nullptr)
    {
        CrashLog("[CTellurBrush::Start] no function interface available\n");
        return 0;
    }
    return m_Function->Start(pModification, this, view, uFlags, point);
}

int CTellurBrush::End(ITerrainModification* pModification,
                      ViewId view,
                      uint32_t uFlags,
                      ViewPoint point)
{
    if (m_Function == nullptr)
    {
        CrashLog("[CTellurBrush::End] no function interface available\n");
        return 0;
    }
    const int iResult = m_Function->End(pModification, this, view, uFlags, point);
    LimitTurned();
    return iResult;
}

int CTellurBrush::OnMouseMove(ITerrainModification* pModification,
                              ViewId view,
                              uint32_t uFlags,
                              ViewPoint point,
                              uintptr_t uExtra1,
                              uintptr_t uExtra2)
{
    if (m_Function == nullptr)
    {
        CrashLog("[CTellurBrush::OnMouseMove] no function interface available\n");
        return 0;
    }
    return m_Function->OnMouseMove(pModification, this, view, uFlags, point, uExtra1, uExtra2);
}

bool CTellurBrush::Render(ITerrainModification* pModification, const SVec3* pPickedPoint)
{
    return m_Function != nullptr && m_Function->Render(pModification, this, pPickedPoint);
}

void CTellurBrush::SetBitmap(CTellurBitmap* pBitmap)
{
    m_Bitmap.reset(pBitmap);
    FreeTurned();
    m_BitmapChanged = true;
}

IImage* CTellurBrush::GetBitmapImage()
{
    return m_Bitmap != nullptr ? m_Bitmap->GetImage() : nullptr;
}

const IImage* CTellurBrush::GetBitmapImage() const
{
    return m_Bitmap != nullptr ? std::as_const(*m_Bitmap).GetImage() : nullptr;
}

const char* CTellurBrush::GetBitmapPath() const
{
    return m_Bitmap != nullptr ? m_Bitmap->GetPath() : nullptr;
}

bool CTellurBrush::LoadBitmap(const char* pszPath)
{
    if (pszPath == nullptr)
    {
        CrashLog("[CTellurBrush::LoadBitmap] no path\n");
        return false;
    }
    if (m_Bitmap == nullptr)
    {
        m_Bitmap = std::make_unique<CTellurBitmap>();
    }
    FreeTurned();
    m_BitmapChanged = true;
    return m_Bitmap->Load(pszPath);
}

void CTellurBrush::SetFunction(ITellurFunction* pFunction)
{
    m_Function.reset(pFunction);
}

const char* CTellurBrush::GetFunctionName() const
{
    if (m_Function == nullptr)
    {
        CrashLog("[CTellurBrush::GetFunctionName] no function\n");
        return nullptr;
    }
    return m_Function->GetClassName();
}

EStrokePath CTellurBrush::GetStrokePath() const
{
    return m_Function != nullptr ? m_Function->GetStrokePath() : EStrokePath::None;
}

bool CTellurBrush::HeedsModeKeys() const
{
    return m_Function != nullptr && m_Function->HeedsModeKeys();
}

bool CTellurBrush::GetEnds(SVec3& first, SVec3& second) const
{
    return m_Function != nullptr && m_Function->GetEnds(first, second);
}

CRTTIObject* CTellurBrush::GetRTTIObject()
{
    return m_Function != nullptr ? m_Function->GetRTTIObject() : nullptr;
}

const CRTTIObject* CTellurBrush::GetRTTIObject() const
{
    return m_Function != nullptr ? std::as_const(*m_Function).GetRTTIObject() : nullptr;
}

bool CTellurBrush::SetCursor()
{
    if (m_Function == nullptr)
    {
        CrashLog("[CTellurBrush::SetCursor] no function interface\n");
        return false;
    }
    return m_Function->SetCursor();
}

SExtents& CTellurBrush::GetExtents(
    SExtents& clipped, float fX, float fZ, SExtents& raw, float fSizeX, float fSizeZ) const
{
    const float fHalf = m_Extent * 0.5F;
    raw.min = {fX - fHalf, 0.0F, fZ - fHalf};
    raw.max = {fX + fHalf, 0.0F, fZ + fHalf};
    clipped.min = {std::max(raw.min.x, 0.0F), 0.0F, std::max(raw.min.z, 0.0F)};
    clipped.max = {std::min(raw.max.x, fSizeX), 0.0F, std::min(raw.max.z, fSizeZ)};
    return clipped;
}

// The image that gives the weights of a point: turned once for all points of one form.
CTellurBitmap* CTellurBrush::GetShapeImage(const SPointForm& form) const
{
    constexpr size_t MOST_TURNED = 16; // what the images of one stroke need
    const IImage* pImage = GetBitmapImage();
    if (!form.IsTurned() || pImage == nullptr)
    {
        return m_Bitmap.get();
    }
    SPointForm turn = form;
    turn.fPower = 1.0F; // means nothing to the image
    const auto found = std::find_if(m_Turned.begin(),
                                    m_Turned.end(),
                                    [&turn](const STurned& turned) { return turned.form == turn; });
    if (found != m_Turned.end())
    {
        return found->pBitmap.get();
    }
    if (m_Turned.size() < MOST_TURNED)
    {
        STurned turned = {turn, std::unique_ptr<CTellurBitmap>(m_Bitmap->Clone())};
        if (turned.pBitmap->GetImage() == nullptr) // no memory for the copy
        {
            return m_Bitmap.get();
        }
        m_NextTurned = m_Turned.size();
        m_Turned.push_back(std::move(turned));
    }
    m_NextTurned = m_NextTurned < m_Turned.size() ? m_NextTurned : 0;
    STurned& next = m_Turned[m_NextTurned++];
    next.form = turn;
    TurnShape(*pImage, turn, *next.pBitmap->GetImage());
    return next.pBitmap.get();
}

void CTellurBrush::FreeTurned()
{
    m_Turned.clear();
}

void CTellurBrush::LimitTurned()
{
    constexpr size_t MOST_BYTES = size_t{1} << 20; // 16 copies of 256 x 256 pixels
    const IImage* pImage = GetBitmapImage();
    if (pImage != nullptr &&
        m_Turned.size() * pImage->GetWidth() * pImage->GetHeight() > MOST_BYTES)
    {
        FreeTurned();
    }
}

void CTellurBrush::CalculateWeights(CVertDataSet& set, const SVec3& center)
{
    const SPointForm& form = GetPointForm();
    set.GetDataFromBitmap(
        center, m_Extent, GetShapeImage(form), m_PowerModifier * form.fPower, m_Hardness);
}

bool CTellurBrush::GetShape(SBrushShape& shape) const
{
    const SPointForm& form = GetPointForm();
    const CTellurBitmap* pBitmap = GetShapeImage(form);
    const IImage* pImage = pBitmap != nullptr ? pBitmap->GetImage() : nullptr;
    const uint8_t* pPixels = pImage != nullptr ? pImage->GetRawData() : nullptr;
    // A mask is asked vertex by vertex, so a brush with one is not told in numbers.
    if (pPixels == nullptr || std::fabs(m_Extent) < SHAPE_LEAST_SIDE || IsMaskActing())
    {
        return false;
    }
    shape = {pPixels,
             static_cast<int>(pImage->GetWidth()),
             static_cast<int>(pImage->GetHeight()),
             m_Extent,
             m_PowerModifier * form.fPower,
             m_Hardness};
    return shape.iWidth > 0 && shape.iHeight > 0;
}
