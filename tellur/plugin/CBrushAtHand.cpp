#include "tellur/plugin/CBrushAtHand.h"

#include "host/CTextFile.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/plugin/BrushText.h"
#include "tellur/plugin/CPanelLink.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr const char* FIRST_TOOL = "RelativeHeightFunction";
constexpr const char* SMOOTHING = "BlurFunction";

bool Holds(const CBrushContainer::CBrushList& list, const CTellurBrush* pBrush)
{
    return std::any_of(
        list.begin(), list.end(), [pBrush](const auto& pOther) { return pOther.get() == pBrush; });
}

} // namespace

CBrushAtHand::CBrushAtHand(CBrushContainer& brushes, CPanelLink& panel)
    : m_Brushes(brushes)
    , m_Panel(panel)
{
}

CBrushAtHand::~CBrushAtHand() = default;

void CBrushAtHand::Set(CTellurBrush* pBrush)
{
    // While the current brush is still there: it is the tool that may come back.
    NoteTool();
    m_pCurrentBrush = pBrush;
    // The picture is of the brush before; the next frame makes another one.
    GetTerraformingState().ReleasePreview();
    GetTerraformingState().ApplyOverlay(pBrush != nullptr ? EEditOverlay::On : EEditOverlay::Off);
    m_Panel.ShowOtherBrush();
}

void CBrushAtHand::TakeOver(std::unique_ptr<CTellurBrush> pBrush)
{
    CTellurBrush* pNew = pBrush.get();
    CBrushContainer::CBrushList old;          // goes when nothing points into it any more
    if (!GetTerraformingState().IsDragging()) // a drag keeps the brush it began with
    {
        old.swap(m_KeptBrushes);
    }
    m_KeptBrushes.push_back(std::move(pBrush));
    Set(pNew);
}

void CBrushAtHand::UseCloneOf(const CTellurBrush& brush)
{
    std::unique_ptr<CTellurBrush> pCopy(brush.Clone());
    // Whoever is replaced stays until the clone is current and no drag works with it any more.
    std::unique_ptr<CTellurBrush> pReplaced;
    if (m_Brushes.SetBrush(pCopy.get(), &pReplaced))
    {
        static_cast<void>(pCopy.release()); // the container's from now on
    }
    Set(m_Brushes.FindBrush(brush.GetFunctionName()));
    if (GetTerraformingState().IsDragging()) // a drag keeps the brush it began with
    {
        m_KeptBrushes.push_back(std::move(pReplaced));
    }
    else
    {
        m_KeptBrushes.clear();
    }
}

bool CBrushAtHand::ReplaceTool(std::unique_ptr<CTellurBrush> pBrush)
{
    CTellurBrush* pNew = pBrush.get();
    std::unique_ptr<CTellurBrush> pReplaced;
    if (!m_Brushes.SetBrush(pNew, &pReplaced))
    {
        return false;
    }
    static_cast<void>(pBrush.release()); // the container's from now on
    if (pReplaced != nullptr && m_pCurrentBrush == pReplaced.get())
    {
        Set(pNew);
    }
    if (GetTerraformingState().IsDragging()) // a drag keeps the brush it began with
    {
        m_KeptBrushes.push_back(std::move(pReplaced));
    }
    return true;
}

bool CBrushAtHand::Has(const CTellurBrush* pBrush) const
{
    return pBrush != nullptr &&
           (Holds(m_Brushes.GetTools(), pBrush) || Holds(m_KeptBrushes, pBrush) ||
            Holds(m_Brushes.GetPredefined(), pBrush));
}

CTellurBrush* CBrushAtHand::GetTool() const
{
    const bool bSmoothing = m_pCurrentBrush != nullptr && m_pCurrentBrush == m_pSmoother.get();
    return bSmoothing ? m_pSmoothed : m_pCurrentBrush;
}

void CBrushAtHand::NoteTool()
{
    // The brush of strokes that smooth is nobody's tool; what it stands in for is noted.
    CTellurBrush* pTool = GetTool();
    if (Has(pTool) && pTool->GetRTTIObject() != nullptr)
    {
        m_pLastTool = pTool;
        m_LastFunction = pTool->GetFunctionName();
    }
}

CTellurBrush* CBrushAtHand::FindLastTool() const
{
    if (Has(m_pLastTool))
    {
        return m_pLastTool;
    }
    CTellurBrush* pTool = m_Brushes.FindBrush(m_LastFunction.c_str());
    return pTool != nullptr ? pTool : m_Brushes.FindBrush(FIRST_TOOL);
}

const CTellurBrush* CBrushAtHand::FindSmoothing() const
{
    return m_Brushes.FindBrush(SMOOTHING);
}

// The brush of the stroke before goes on where nothing about it has changed, because that is what
// whoever plays a recording has.
bool CBrushAtHand::BeginSmoothing()
{
    if (GetTerraformingState().IsDragging())
    {
        return false;
    }
    EndSmoothing();
    const CTellurBrush* pBlur = FindSmoothing();
    if (pBlur == nullptr || m_pCurrentBrush == nullptr || !IsTerraformingOn())
    {
        return false;
    }
    std::unique_ptr<CTellurBrush> pNew(pBlur->Clone());
    pNew->SetExtent(m_pCurrentBrush->GetExtent());
    pNew->SetMaskEnabled(m_pCurrentBrush->IsMaskEnabled());
    if (m_pCurrentBrush->GetMaskPath().empty())
    {
        pNew->DropMask();
    }
    else
    {
        pNew->SetMask(m_pCurrentBrush->GetMaskPath().c_str());
    }
    CTextFile before;
    CTextFile now;
    const bool bSame = m_pSmoother != nullptr && WriteBrush(before, *m_pSmoother) &&
                       WriteBrush(now, *pNew) && before.GetText() == now.GetText();
    if (!bSame)
    {
        m_pSmoother = std::move(pNew);
    }
    m_pSmoothed = m_pCurrentBrush;
    Set(m_pSmoother.get());
    return true;
}

void CBrushAtHand::EndSmoothing()
{
    CTellurBrush* pTool = std::exchange(m_pSmoothed, nullptr);
    if (pTool == nullptr || m_pCurrentBrush != m_pSmoother.get())
    {
        return;
    }
    Set(Has(pTool) ? pTool : FindLastTool());
}

void CBrushAtHand::Clear()
{
    m_pCurrentBrush = nullptr;
    m_KeptBrushes.clear();
    m_pSmoother.reset();
}
