#include "editor/app/CViewWidget.h"

#include "editor/app/CCursorNote.h"
#include "editor/app/CViewHands.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/CEditorHost.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "framework/qt/WidgetAccess.h"
#include "host/IPlugin.h"
#include "host/IPluginTools.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
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
    return eKind == EViewKind::Top ? nullptr
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
    , m_Navigator(GetCamera(parts.host, view, eKind))
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
    , m_Keys(parts.keys, parts.settings, parts.hand, [this] { update(); })
    , m_Mouse(m_Input, *m_pNote, *m_pHand, m_Keys)
    , m_Quality([this] { update(); })
{
    setObjectName(QString("view-%1").arg(view));
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
    SRenderSettings settings = m_Parts.settings.render;
    settings.bWireFrame = m_bWireFrame;
    settings.bSmoothEdges = m_Parts.settings.bSmoothEdges && !m_bSoftware;
    settings.bPatches = !m_bSoftware;
    m_Parts.fillMark(settings.mark);
    settings.mark.fSignPixels = static_cast<float>(devicePixelRatioF());
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
    m_Navigator.SetSize(static_cast<int>(std::lround(width() * fScale)),
                        static_cast<int>(std::lround(height() * fScale)));
    m_Parts.lookAgain();
    QOpenGLWidget::resizeEvent(pEvent); // draws already, and that may be the only frame
}

void CViewWidget::moveEvent(QMoveEvent* pEvent)
{
    QOpenGLWidget::moveEvent(pEvent);
    m_Parts.lookAgain();
}

bool CViewWidget::event(QEvent* pEvent)
{
    switch (pEvent->type())
    {
    case QEvent::Enter:
        m_Events.onActive(m_View);
        m_Parts.host.GetModes().SetModeCursor();
        TakeKeyboard();
        break;
    case QEvent::WindowActivate: // a dialog lay over the cursor, or the window has just come
        if (QApplication::widgetAt(QCursor::pos()) == this)
        {
            SeeCursor();
            const QWidget* pFocus = window()->focusWidget();
            if (pFocus == nullptr || dynamic_cast<const CViewWidget*>(pFocus) != nullptr)
            {
                TakeKeyboard();
            }
        }
        break;
    case QEvent::Leave:
        LoseCursor();
        Update();
        break;
    case QEvent::ShortcutOverride:
        if (m_pHand->TakesKey(*static_cast<QKeyEvent*>(pEvent)))
        {
            pEvent->accept();
            return true;
        }
        break;
    default:
        break;
    }
    return QOpenGLWidget::event(pEvent);
}

void CViewWidget::Update()
{
    update();
    if (m_Parts.hand.bProtect || m_Parts.host.GetModes().GetCurrentModeId() != NO_MODE)
    {
        m_Events.onMark();
    }
    m_Events.onFrame(m_View);
}

void CViewWidget::mousePressEvent(QMouseEvent* pEvent)
{
    if (!CViewMouse::TakesButton(*pEvent))
    {
        pEvent->ignore();
        return;
    }
    m_Events.onActive(m_View);
    m_Mouse.Press(*pEvent, devicePixelRatioF());
    ShowKeys(pEvent->modifiers());
    Update();
}

void CViewWidget::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (m_Mouse.Move(*pEvent, devicePixelRatioF()))
    {
        ShowKeys(pEvent->modifiers());
        Update();
    }
}

void CViewWidget::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (!CViewMouse::TakesButton(*pEvent))
    {
        pEvent->ignore();
        return;
    }
    const bool bMenu = m_Mouse.Release(*pEvent, devicePixelRatioF());
    ShowKeys(pEvent->modifiers());
    Update();
    if (bMenu)
    {
        m_Events.onMenu(m_View, pEvent->globalPosition().toPoint());
    }
}

void CViewWidget::tabletEvent(QTabletEvent* pEvent)
{
    m_Mouse.Pen(*pEvent);
    pEvent->ignore(); // an event of the mouse follows, with all that belongs to it
}

void CViewWidget::wheelEvent(QWheelEvent* pEvent)
{
    m_Mouse.Wheel(*pEvent, devicePixelRatioF());
    pEvent->accept();
    Update();
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

void CViewWidget::ShowKeys(Qt::KeyboardModifiers modifiers)
{
    m_bSmooth = m_Keys.IsSmoothing(modifiers);
    const bool bStroke = m_Input.IsStroking() && m_pTools != nullptr && m_pTools->HeedsMinMax();
    const bool bMin = modifiers.testFlag(Qt::ControlModifier) || m_Parts.hand.bRaise;
    const bool bMax = modifiers.testFlag(Qt::AltModifier) || m_Parts.hand.bLower;
    const bool bTaking = modifiers.testFlag(Qt::ControlModifier);
    m_pNote->SetState(m_Parts.hand.bProtect ? (bTaking ? "unprotect" : "protect")
                      : bStroke && bMin     ? "min"
                      : bStroke && bMax     ? "max"
                                            : "");
}

// The mark shows what a press would do with the keys that are held now.
void CViewWidget::FollowKey(const QKeyEvent& event)
{
    if (!event.isAutoRepeat())
    {
        Update();
    }
}

void CViewWidget::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bTaken = m_pHand->Press(*pEvent) || m_Keys.Set(*pEvent, true);
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    FollowKey(*pEvent);
    if (!bTaken)
    {
        QOpenGLWidget::keyPressEvent(pEvent);
    }
}

void CViewWidget::keyReleaseEvent(QKeyEvent* pEvent)
{
    const bool bTaken = m_pHand->Release(*pEvent) || m_Keys.Set(*pEvent, false);
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    FollowKey(*pEvent);
    if (!bTaken)
    {
        QOpenGLWidget::keyReleaseEvent(pEvent);
    }
}

void CViewWidget::Fly()
{
    float fSeconds = 0.0F;
    if (!m_Keys.TakeFlight(fSeconds))
    {
        return;
    }
    if (m_Navigator.Fly(GetTerrain(), m_Keys.GetFlyKeys(), fSeconds))
    {
        m_Input.RepeatHover();
    }
    m_FrameTimer.start(0);
}

// Keys work in the view that the cursor is in, without a click.
void CViewWidget::TakeKeyboard()
{
    if (isActiveWindow() && QApplication::activePopupWidget() == nullptr &&
        QApplication::activeModalWidget() == nullptr &&
        QGuiApplication::mouseButtons() == Qt::NoButton)
    {
        setFocus(Qt::MouseFocusReason);
    }
}

void CViewWidget::LoseCursor()
{
    if (!m_pHand->IsHeld())
    {
        m_Input.Leave();
    }
}

void CViewWidget::SeeCursor()
{
    const QPoint cursor = mapFromGlobal(QCursor::pos());
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    if (m_pHand->IsHeld())
    {
        m_Input.RepeatHover(); // where the key went down
    }
    else if (!rect().contains(cursor))
    {
        m_Input.Leave();
    }
    else if (m_Input.IsIdle())
    {
        const QPointF at = CViewMouse::GetDevicePosition(cursor, devicePixelRatioF());
        m_Input.Move(static_cast<float>(at.x()), static_cast<float>(at.y()), 0);
    }
    Update();
}

void CViewWidget::focusOutEvent(QFocusEvent* pEvent)
{
    m_pHand->End();
    m_Keys.Release(dynamic_cast<CViewWidget*>(QApplication::focusWidget()) == nullptr);
    m_pNote->SetState("");
    m_bSmooth = false;
    if (pEvent->reason() == Qt::MenuBarFocusReason || pEvent->reason() == Qt::PopupFocusReason)
    {
        m_Input.End(); // a menu takes the mouse, and the release with it
    }
    QOpenGLWidget::focusOutEvent(pEvent);
}
