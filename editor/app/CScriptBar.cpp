#include "editor/app/CScriptBar.h"

#include "editor/core/Words.h"

#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QProgressBar>
#include <QToolBar>
#include <QToolButton>

namespace
{

constexpr int FAST_MS = 200;  // between two pictures
constexpr int SMOOTH_MS = 30; // the same
constexpr int SLOW_MS = 60;   // for each call

} // namespace

CScriptBar::CScriptBar(QMainWindow& window, int& iSpeed)
    : COverlayBar(window, Qt::TopEdge, "script-bar")
    , m_Speed(iSpeed)
    , m_pName(new QLabel(this))
    , m_pProgress(new QProgressBar(this))
    , m_pSpeed(new QComboBox(this))
{
    m_pName->setTextFormat(Qt::PlainText);
    setAccessibleName(Words("Script that is played"));
    m_pProgress->setObjectName("script-progress");
    m_pProgress->setAccessibleName(Words("How far the script is"));
    m_pProgress->setFormat(Words("%v of %m"));
    m_pSpeed->setObjectName("script-speed");
    m_pSpeed->setAccessibleName(Words("Speed"));
    m_pSpeed->setToolTip(Words("How fast scripts are played"));
    m_pSpeed->addItems({Words("Fast"), Words("Smooth"), Words("Slow")}); // as EScriptSpeed
    m_pSpeed->setCurrentIndex(m_Speed);
    connect(m_pSpeed, &QComboBox::currentIndexChanged, this, [this](int i) { m_Speed = i; });
    m_Pause.setSingleShot(true);
    auto* pStop = new QToolButton(this);
    pStop->setObjectName("script-stop");
    pStop->setText(Words("Stop (Escape)"));
    pStop->setToolTip(Words("Stops the script; what it has done stays and can be undone"));
    pStop->setFocusPolicy(Qt::TabFocus);
    m_pSpeed->setFocusPolicy(Qt::TabFocus);
    connect(pStop, &QToolButton::clicked, this, [this] { Stop(); });
    GetRow().addWidget(m_pName);
    GetRow().addWidget(m_pProgress, 1);
    GetRow().addWidget(m_pSpeed);
    GetRow().addWidget(pStop);
}

void CScriptBar::Begin(const QString& strName, size_t nCalls)
{
    m_nCalls = nCalls;
    m_nPlayed = 0;
    m_bStop = false;
    m_bDropped = false;
    m_pName->setText(strName);
    m_pProgress->setRange(0, static_cast<int>(nCalls));
    m_pProgress->setValue(0);
    GreyOut();
    QCoreApplication::instance()->installEventFilter(this);
    show();
    m_SinceFrame.start();
}

bool CScriptBar::Step(const std::function<void()>& requestFrames)
{
    ++m_nPlayed;
    const EScriptSpeed eSpeed = static_cast<EScriptSpeed>(m_Speed);
    const int iPause = eSpeed == EScriptSpeed::Fast ? FAST_MS : SMOOTH_MS;
    if (eSpeed != EScriptSpeed::Slow && m_SinceFrame.elapsed() < iPause)
    {
        return !m_bStop;
    }
    m_pProgress->setValue(static_cast<int>(m_nPlayed));
    requestFrames();
    QCoreApplication::processEvents();
    if (eSpeed == EScriptSpeed::Slow)
    {
        m_Pause.start(SLOW_MS);
        while (m_Pause.isActive() && !m_bStop)
        {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    m_SinceFrame.start();
    return !m_bStop;
}

bool CScriptBar::End()
{
    QCoreApplication::processEvents(); // what was pressed last is dropped, too
    QCoreApplication::instance()->removeEventFilter(this);
    m_nCalls = 0;
    hide();
    LightUp();
    return m_bDropped;
}

// The views stay as they are: they show what the script does.
void CScriptBar::GreyOut()
{
    QMainWindow& window = GetWindow();
    m_pFocus = window.focusWidget();
    QList<QWidget*> found = {window.menuBar()};
    for (QToolBar* pBar : window.findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
    {
        found << pBar;
    }
    for (QDockWidget* pDock : window.findChildren<QDockWidget*>())
    {
        found << pDock;
    }
    m_Greyed.clear();
    for (QWidget* pWidget : found)
    {
        if (pWidget->isEnabled())
        {
            pWidget->setEnabled(false);
            m_Greyed << pWidget;
        }
    }
}

void CScriptBar::LightUp()
{
    for (const QPointer<QWidget>& pWidget : m_Greyed)
    {
        if (pWidget != nullptr) // the script may have closed it
        {
            pWidget->setEnabled(true);
        }
    }
    // One that is grey has lost the keyboard.
    if (m_pFocus != nullptr && m_pFocus != GetWindow().focusWidget())
    {
        m_pFocus->setFocus();
    }
}

// The bar's own controls with their open lists, and the dialogs of long work and of faults.
bool CScriptBar::IsOurs(const QObject* pWatched) const
{
    const auto* pWidget = qobject_cast<const QWidget*>(pWatched);
    if (pWidget == nullptr)
    {
        // A window of the platform hands on to its widgets, which are asked for themselves.
        return pWatched->isWindowType();
    }
    const QWidget* pPopup = QApplication::activePopupWidget();
    const QWidget* pModal = QApplication::activeModalWidget();
    return isAncestorOf(pWidget) || (pModal != nullptr && pWidget->window() == pModal) ||
           (pPopup != nullptr && isAncestorOf(pPopup));
}

// What lets go passes: a key that was held before must not stay so.
bool CScriptBar::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (!IsPlaying())
    {
        return COverlayBar::eventFilter(pWatched, pEvent);
    }
    switch (pEvent->type())
    {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(pEvent)->key() == Qt::Key_Escape &&
            QApplication::activeModalWidget() == nullptr)
        {
            m_bStop = true;
            pEvent->accept();
            return true;
        }
        [[fallthrough]];
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TabletPress:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::Shortcut:
    case QEvent::DragEnter:
    case QEvent::Drop:
        if (IsOurs(pWatched))
        {
            return false;
        }
        m_bDropped = true;
        return true;
    default:
        return COverlayBar::eventFilter(pWatched, pEvent);
    }
}
