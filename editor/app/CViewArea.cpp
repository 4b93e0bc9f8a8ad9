#include "editor/app/CViewArea.h"

#include "editor/app/CGroundGuides.h"
#include "editor/app/CViewFrame.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/Words.h"
#include "editor/view/CTerrainCopies.h"
#include "editor/view/Vectors.h"
#include "editor/view/ViewGround.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CWorld.h"
#include "host/IPlugin.h"
#include "host/IPluginTools.h"
#include "host/Notice.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>

#include <algorithm>

namespace
{

// Less is no view to work in: what is docked gives way instead.
constexpr int LEAST_WIDTH = 400; // or half of a screen that is narrower
constexpr int LEAST_HEIGHT = 180;

} // namespace

CViewArea::CViewArea(QWidget* pParent, SViewParts parts, SViewEvents events)
    : CViewGrid(pParent)
    , m_Parts(std::move(parts))
    , m_MarkSource(m_Parts.pPlugin)
    , m_Events(std::move(events))
{
    // One for all views: the contexts of a window share their textures.
    m_Parts.pCopies = std::make_shared<CTerrainCopies>();
    m_Parts.fillMark = [this](SGroundMark& mark)
    {
        FillMark(mark);
    };
    m_Parts.seeCursor = [this]
    {
        SeeCursor();
    };
    m_Parts.lookAgain = [this]
    {
        LookAgain();
    };
    m_Parts.drawGuides = [this]
    {
        DrawGuides();
    };
    setObjectName("views");
    setMinimumSize(std::min(LEAST_WIDTH, screen()->availableSize().width() / 2), LEAST_HEIGHT);
    m_Events.onMark = [this]
    {
        RequestFrames();
    };
    m_Events.onTap = [this](ViewId view)
    {
        ToggleAlone(view);
    };
    const auto onActive = m_Events.onActive;
    m_Events.onActive = [this, onActive](ViewId view)
    {
        m_Active = view;
        ShowActive();
        onActive(view);
    };
}

CViewWidget* CViewArea::Add(EViewKind eKind)
{
    EndGestures();
    auto* pFrame = new CViewFrame; // the grid's, once it has a place there
    auto* pView = new CViewWidget(pFrame, m_Next++, eKind, m_Parts, m_Events);
    pFrame->SetView(*pView);
    m_Views.push_back(pView);
    m_Frames.push_back(pFrame);
    if (m_Active == NO_VIEW)
    {
        m_Active = pView->GetViewId();
    }
    PlaceViews(); // before the camera looks at its view
    SViewLook look;
    look.bFramed = true;
    m_Closed.Take(eKind, look);
    pView->LookFrom(look);
    return pView;
}

bool CViewArea::Close(ViewId view)
{
    CViewWidget* pView = Find(view);
    if (m_Views.size() < 2 || pView == nullptr)
    {
        return false;
    }
    EndGestures(); // a drag must not go on without its view
    m_Closed.Add(pView->GetNavigator().GetLook());
    const auto found = std::find(m_Views.begin(), m_Views.end(), pView);
    const auto frame = m_Frames.begin() + (found - m_Views.begin());
    m_Views.erase(found);
    delete *frame; // and the view
    m_Frames.erase(frame);
    if (m_Active == view)
    {
        m_Active = m_Views.front()->GetViewId();
    }
    PlaceViews();
    return true;
}

void CViewArea::PlaceViews()
{
    Place({m_Frames.begin(), m_Frames.end()});
    ShowActive();
    LookAgain();
}

void CViewArea::ToggleAlone(ViewId view)
{
    CViewWidget* pView = Find(view);
    if (pView == nullptr || m_Views.size() < 2)
    {
        return;
    }
    EndGestures();
    ShowAlone(IsOneAlone() ? nullptr : pView->parentWidget());
    m_Active = view;
    ShowActive();
    pView->setFocus(); // one that is hidden has given it away
    LookAgain();
    m_Events.onFrame(view); // the menu has a mark for it
}

void CViewArea::GoToNext()
{
    auto next = std::find(m_Views.begin(), m_Views.end(), GetActive());
    do
    {
        next = next + 1 == m_Views.end() ? m_Views.begin() : next + 1;
    } while (!(*next)->isVisibleTo(this));
    (*next)->setFocus();
    m_Events.onActive((*next)->GetViewId());
}

void CViewArea::ShowActive()
{
    const bool bSeveral = m_Views.size() > 1 && !IsOneAlone();
    for (CViewFrame* pFrame : m_Frames)
    {
        const CViewWidget* pView = GetActive();
        pFrame->SetActive(bSeveral && pView != nullptr && pView->parentWidget() == pFrame);
    }
}

CViewWidget* CViewArea::Find(ViewId view) const
{
    for (CViewWidget* pView : m_Views)
    {
        if (pView->GetViewId() == view)
        {
            return pView;
        }
    }
    return nullptr;
}

CViewWidget* CViewArea::GetActive() const
{
    return Find(m_Active);
}

ViewId CViewArea::GetActiveId() const
{
    return m_Active;
}

// One mark for all views: the cursor is in one of them, or in none.
EMarkPlace CViewArea::FindMark(SVec3& at, bool& bSmooth) const
{
    EMarkPlace ePlace = m_Parts.hand.bScript ? EMarkPlace::Box : EMarkPlace::None;
    bSmooth = false;
    for (auto i = m_Views.begin(); i != m_Views.end() && ePlace == EMarkPlace::None; ++i)
    {
        const CViewInput& input = (*i)->GetInput();
        ePlace = input.IsFixed()      ? EMarkPlace::Box
                 : input.FindMark(at) ? EMarkPlace::Cursor
                                      : EMarkPlace::None;
        bSmooth = ePlace == EMarkPlace::Cursor && (*i)->WouldSmooth();
    }
    return ePlace;
}

void CViewArea::FillMark(SGroundMark& mark)
{
    constexpr float RADIANS = 0.017453292519943F;
    bool bSmooth = false;
    mark.ePlace = FindMark(mark.at, bSmooth);
    m_MarkSource.Fill(bSmooth, mark);
    const SInputSettings& input = m_Parts.settings.input;
    mark.fTurn = input.form.eTurn == EBrushTurn::Fixed ? input.form.fDegrees * RADIANS : 0.0F;
    mark.nImages = 0;
    if (mark.ePlace != EMarkPlace::Cursor || !mark.bTool)
    {
        return;
    }
    std::array<CStrokeSender::SImage, SSymmetry::MOST_IMAGES> images;
    const size_t nFound = CStrokeSender::FindImages(
        m_Parts.host.GetEngine().GetCWorld().GetCTerrain(), input.symmetry, mark.at, images);
    for (mark.nImages = 0; mark.nImages < nFound; ++mark.nImages)
    {
        SMarkImage& image = mark.images[mark.nImages];
        image.at = images[mark.nImages].at;
        input.symmetry.GetTurn(images[mark.nImages].i, image.fTurn, image.bFlip);
        image.fTurn += image.bFlip ? -mark.fTurn : mark.fTurn;
    }
}

void CViewArea::DrawGuides() const
{
    SVec3 mark;
    bool bSmooth = false;
    const bool bMark = FindMark(mark, bSmooth) == EMarkPlace::Cursor;
    CGroundGuides guides(m_Parts.host.GetEngine());
    guides.DrawRuler(m_Parts.hand.ruler);
    guides.DrawPath(m_Parts.hand.path, bMark ? &mark : nullptr);
    auto* pTools = dynamic_cast<IPluginTools*>(m_Parts.pPlugin);
    if (pTools != nullptr && (pTools->IsTerraforming() || pTools->IsPainting()))
    {
        guides.DrawSymmetry(m_Parts.settings.input.symmetry);
    }
}

bool CViewArea::IsComplete() const
{
    return std::all_of(m_Views.begin(),
                       m_Views.end(),
                       [this](const CViewWidget* pView)
                       { return !pView->isVisibleTo(this) || pView->GetStatistics().bComplete; });
}

void CViewArea::RequestFrames()
{
    for (CViewWidget* pView : m_Views)
    {
        pView->RequestFrame();
    }
}

void CViewArea::FrameAll()
{
    m_Closed.Set({});
    for (CViewWidget* pView : m_Views)
    {
        pView->FrameAll();
    }
}

void CViewArea::RepeatHover()
{
    auto* pUnder = dynamic_cast<CViewWidget*>(QApplication::widgetAt(QCursor::pos()));
    if (pUnder != nullptr && Find(pUnder->GetViewId()) == pUnder)
    {
        pUnder->SeeCursor(); // a menu or a dialog was there
    }
    else if (CViewWidget* pView = GetActive())
    {
        pView->GetInput().RepeatHover();
    }
}

void CViewArea::LookAgain()
{
    m_bLookAgain = true;
    RequestFrames();
}

void CViewArea::moveEvent(QMoveEvent* pEvent)
{
    CViewGrid::moveEvent(pEvent);
    LookAgain();
}

// The plug-in knows what the cursor is over by the last event of the mouse alone, and another level
// brings none. Where the cursor is in no view it must hear of that, too.
void CViewArea::SeeCursor()
{
    const bool bIdle = std::all_of(m_Views.begin(),
                                   m_Views.end(),
                                   [](CViewWidget* pView) { return pView->GetInput().IsIdle(); });
    if (!m_bLookAgain || !bIdle || m_Parts.hand.bScript || m_Parts.host.GetInput().IsDragging())
    {
        return;
    }
    m_bLookAgain = false;
    const QWidget* pUnder = QApplication::widgetAt(QCursor::pos());
    for (CViewWidget* pView : m_Views)
    {
        if (pView != pUnder)
        {
            pView->LoseCursor();
        }
    }
    // Last: what the others have lost is not what counts.
    const auto found = std::find(m_Views.begin(), m_Views.end(), pUnder);
    if (found != m_Views.end())
    {
        (*found)->SeeCursor();
    }
}

void CViewArea::SetProtecting(bool bOn)
{
    if (bOn != IsProtecting())
    {
        EndGestures(); // a stroke goes on as it began, or not at all
        m_Parts.hand.bProtect = bOn;
        m_Parts.hand.ruler.SetOn(false);
        if (!m_Parts.hand.path.GetKnots().empty()) // the button does one of the two
        {
            Notice(Words("The path is dropped: the button paints the protection now"));
        }
        m_Parts.hand.path.Stop();
        RepeatHover();
        RequestFrames();
    }
}

void CViewArea::SetMeasuring(bool bOn)
{
    if (bOn != m_Parts.hand.ruler.IsOn())
    {
        SetProtecting(false); // the button does one of them
        EndGestures();
        if (!m_Parts.hand.path.GetKnots().empty())
        {
            Notice(Words("The path is dropped: the button measures now"));
        }
        m_Parts.hand.path.Stop();
        m_Parts.hand.ruler.SetOn(bOn);
        RepeatHover();
        RequestFrames();
    }
}

bool CViewArea::IsStroking() const
{
    return std::any_of(m_Views.begin(),
                       m_Views.end(),
                       [](CViewWidget* pView) { return pView->GetInput().IsStroking(); });
}

bool CViewArea::NeedsBrush() const
{
    return std::any_of(m_Views.begin(),
                       m_Views.end(),
                       [](CViewWidget* pView)
                       { return pView->GetInput().GetStroke().NeedsBrush(); });
}

bool CViewArea::CancelStroke()
{
    return std::any_of(m_Views.begin(),
                       m_Views.end(),
                       [](CViewWidget* pView) { return pView->GetInput().Cancel(); });
}

void CViewArea::EndGestures()
{
    for (CViewWidget* pView : m_Views)
    {
        pView->GetInput().End();
    }
}

void CViewArea::LookFrom(CCamera& camera, float fX, float fZ)
{
    CWorld& world = m_Parts.host.GetEngine().GetCWorld();
    SVec3 target = GetBoxCenter(GetGroundBox(world.GetCTerrain()));
    for (CViewWidget* pView : m_Views)
    {
        if (world.GetCameraList().GetCameraOfView(pView->GetViewId()) == &camera)
        {
            const auto fScale = static_cast<float>(pView->devicePixelRatioF());
            pView->GetNavigator().Pick(world.GetCTerrain(),
                                       static_cast<float>(pView->width()) * fScale * 0.5F,
                                       static_cast<float>(pView->height()) * fScale * 0.5F,
                                       target);
            pView->RequestFrame();
        }
    }
    camera.LookFrom(target, fX, fZ);
}
