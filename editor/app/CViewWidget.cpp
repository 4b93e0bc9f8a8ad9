#include "editor/app/CViewWidget.h"

#include "editor/app/CCursorNote.h"
#include "editor/app/CGroundGuides.h"
#include "editor/app/CViewHands.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "framework/qt/WidgetAccess.h"
#include "host/IPlugin.h"
#include "host/IPluginTools.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <algorithm>
#include <cmath>

namespace
{

// Of a terrain that comes in, a frame. The processor that draws makes the normals, too.
constexpr uint64_t MOST_NEW_BYTES = uint64_t{16} << 20;
constexpr uint64_t MOST_SOFTWARE_BYTES = uint64_t{6} << 20;
constexpr float SPOT_CELLS = 8.0F;

CCamera* GetCamera(CEditorHost& host, ViewId view, EViewKind eKind)
{
    return eKind != EViewKind::Perspective
               ? nullptr
               : host.GetEngine().GetCWorld().GetCameraList().AddCamera(view);
}

} // namespace

CViewWidget::CViewWidget(
    QWidget* pParent, ViewId view, EViewKind eKind, SViewParts parts, SViewEvents events)
    : QOpenGLWidget(pParent)
    , m_Parts(parts)
    , m_Events(std::move(events))
    , m_pTools(dynamic_cast<IPluginTools*>(parts.pPlugin))
    , m_View(view)
    , m_Handle(RegisterView(*this))
    , m_Navigator(GetCamera(parts.host, view, eKind), eKind)
    , m_Input(parts.host, parts.pPlugin, view, m_Navigator, parts.settings.input, parts.hand)
    , m_Renderer(parts.pCopies)
    , m_pNote(new CCursorNote(this))
    , m_pHand(std::make_unique<CViewHands>(
          m_pTools,
          parts.pRender,
          parts.keys,
          m_Input,
          *m_pNote,
          [this] { m_Events.onMark(); },
          [this] { SeeCursor(); }))
    , m_Keys(
          parts.keys,
          parts.settings,
          parts.hand,
          [this] { update(); },
          [this] { m_Events.onTap(m_View); })
    , m_Mouse(m_Input, *m_pNote, *m_pHand, m_Keys, parts.settings.input.mouse)
    , m_Quality([this] { update(); })
{
    setObjectName(QString("view-%1").arg(view));
    setAccessibleName(QString(Words("%1 view")).arg(Words(GetViewName(eKind))));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(120, 90);
    m_FrameTimer.setSingleShot(true);
    m_FrameTimer.callOnTimeout(this, [this] { update(); });
}

CViewWidget::~CViewWidget()
{
    ReleaseRenderer();
    m_Parts.host.GetEngine().GetCWorld().GetCameraList().RemoveCamera(m_View);
}

void CViewWidget::ReleaseRenderer()
{
    if (m_bReady)
    {
        makeCurrent();
        m_Renderer.Release();
        doneCurrent();
        m_bReady = false;
    }
}

const CTerrain* CViewWidget::GetTerrain() const
{
    return m_Parts.host.GetEngine().GetCWorld().GetCTerrain();
}

void CViewWidget::initializeGL()
{
    // Qt makes another context when the view moves to another window.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { ReleaseRenderer(); });
    std::string strFault;
    m_bReady = m_Renderer.Initialize(strFault);
    m_bSoftware = m_bReady && m_Renderer.IsSoftware();
    if (!m_bReady)
    {
        m_Events.onFault(QString::fromStdString(strFault));
    }
}

void CViewWidget::paintGL()
{
    QElapsedTimer clock;
    clock.start();
    Fly();
    m_Parts.seeCursor();
    m_Parts.host.RenderFrame();
    m_Parts.drawGuides();
    if (GetKind() == EViewKind::Front || GetKind() == EViewKind::Side)
    {
        CGroundGuides(m_Parts.host.GetEngine()).DrawBase();
    }
    SRenderSettings settings = m_Parts.settings.render;
    settings.bWireFrame = m_bWireFrame;
    settings.bSmoothEdges = m_Parts.settings.bSmoothEdges && !m_bSoftware;
    settings.bPatches = !m_bSoftware;
    m_Parts.fillMark(settings.mark);
    settings.mark.fSignPixels = static_cast<float>(devicePixelRatioF());
    if (m_Parts.hand.ruler.IsOn())
    {
        settings.mark.ePlace = EMarkPlace::None;
    }
    if (m_Parts.hand.bProtect) // the mark is that of a tool, which the button does not reach now
    {
        if (settings.mark.ePlace == EMarkPlace::Cursor)
        {
            m_Input.DrawProtectEdge(settings.mark.at);
        }
        settings.mark.ePlace = EMarkPlace::None;
    }
    settings.fQuality = m_Quality.Get();
    settings.uMostNewBytes = m_bSoftware ? MOST_SOFTWARE_BYTES : MOST_NEW_BYTES;
    settings.bMask = m_pTools == nullptr || m_pTools->IsMaskActing();
    if (m_bReady)
    {
        m_Renderer.Render(
            m_Navigator.GetProjection(GetTerrain()), m_Parts.host.GetEngine(), settings);
    }
    if (m_bSoftware)
    {
        context()->functions()->glFinish(); // otherwise the next call pays for this frame
    }
    m_FrameMilliseconds = static_cast<double>(clock.nsecsElapsed()) * 1e-6;
    if (GetStatistics().bComplete)
    {
        m_Quality.Adapt(m_FrameMilliseconds);
    }
    else
    {
        m_FrameTimer.start(0);
    }
    m_Events.onFrame(m_View);
}

void CViewWidget::resizeEvent(QResizeEvent* pEvent)
{
    const double fScale = devicePixelRatioF();
    const int iWidth = static_cast<int>(std::lround(width() * fScale));
    const int iHeight = static_cast<int>(std::lround(height() * fScale));
    if (m_Input.IsIdle())
    {
        m_Navigator.Resize(GetTerrain(), iWidth, iHeight);
    }
    else
    {
        m_Navigator.SetSize(iWidth, iHeight); // the ground stays under the hand
    }
    m_Parts.lookAgain();
    QOpenGLWidget::resizeEvent(pEvent); // draws already, and that may be the only frame
}

void CViewWidget::moveEvent(QMoveEvent* pEvent)
{
    QOpenGLWidget::moveEvent(pEvent);
    m_Parts.lookAgain();
}

void CViewWidget::SetWireFrame(bool bOn)
{
    m_bWireFrame = bOn;
    update();
}

void CViewWidget::FrameAll()
{
    m_Navigator.FrameTerrain(GetTerrain());
    m_Input.RepeatHover();
    update();
}

void CViewWidget::LookFrom(const SViewLook& look)
{
    if (look.bFramed)
    {
        FrameAll();
        return;
    }
    m_Navigator.SetLook(GetTerrain(), look);
    m_Input.RepeatHover();
    update();
}

void CViewWidget::FrameSpot()
{
    SVec3 hit;
    const CTerrain* pTerrain = GetTerrain();
    if (pTerrain == nullptr || !m_Input.PickCursor(hit))
    {
        FrameAll();
        return;
    }
    const float fCell = pTerrain->GetSize().x / static_cast<float>(pTerrain->GetCellsPerSide());
    const float fBrush = m_pTools != nullptr ? m_pTools->GetBrushExtent() : 0.0F;
    m_Navigator.FrameSpot(pTerrain, hit, std::max(fBrush, fCell * SPOT_CELLS));
    m_Input.RepeatHover();
    update();
}

void CViewWidget::Fly()
{
    float fSeconds = 0.0F;
    if (!m_Keys.TakeFlight(fSeconds))
    {
        return;
    }
    m_Input.Fly(m_Keys.GetFlyKeys(), fSeconds);
    m_FrameTimer.start(0);
}
