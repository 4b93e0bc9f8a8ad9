#include "editor/app/CProgressWindow.h"

#include "host/Progress.h"

#include <QCoreApplication>
#include <QProgressDialog>

#include <algorithm>

namespace
{

constexpr int STEPS = 1000;
constexpr qint64 WORK_TO_TURNS = 3; // of the time

} // namespace

CProgressWindow::CProgressWindow(int iShownAfter, int iTurns)
    : m_ShownAfter(iShownAfter)
    , m_Turns(iTurns)
{
    m_Forget.setSingleShot(true);
    m_Forget.callOnTimeout([this] { m_bCancelled = false; });
}

CProgressWindow::~CProgressWindow() = default;

bool CProgressWindow::Report(QWidget* pParent, const char* pszWhat, float fDone)
{
    if (m_What != pszWhat || !m_Since.isValid())
    {
        m_What = pszWhat;
        m_Since.start();
        m_Turned.start();
        m_NextTurn = m_Turns;
        m_pDialog.reset();
    }
    if (fDone >= 1.0F)
    {
        m_Since.invalidate();
        m_pDialog.reset();
        return true;
    }
    if (m_pDialog == nullptr)
    {
        if (m_Since.elapsed() < m_ShownAfter)
        {
            if (m_Turned.elapsed() >= m_NextTurn)
            {
                m_Turned.start();
                QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
                m_NextTurn = std::max(m_Turns, WORK_TO_TURNS * m_Turned.restart());
            }
            return true;
        }
        m_pDialog = std::make_unique<QProgressDialog>(
            QString::fromUtf8(pszWhat), "Cancel", 0, STEPS, pParent);
        m_pDialog->setWindowModality(Qt::ApplicationModal);
        m_pDialog->setMinimumDuration(0);
    }
    const bool bCancellable = IsProgressCancellable();
    if (!bCancellable)
    {
        m_pDialog->setCancelButton(nullptr);
    }
    m_pDialog->setValue(static_cast<int>(fDone * STEPS)); // lets the window answer
    const bool bGoOn = !bCancellable || !m_pDialog->wasCanceled();
    if (!bGoOn)
    {
        m_bCancelled = true;
        m_Forget.start(0);
        m_Since.invalidate();
        m_pDialog.reset();
    }
    return bGoOn;
}
