#include "editor/app/CProgressWindow.h"

#include "editor/core/Words.h"
#include "host/Progress.h"

#include <QCoreApplication>
#include <QProgressDialog>

namespace
{

constexpr int STEPS = 1000;
constexpr qint64 EARLY_MS = 100; // sooner nothing can be said of the rest
constexpr float PLAINLY_LONGER = 1.3F;

} // namespace

CProgressWindow::CProgressWindow(int iShownAfter)
    : m_ShownAfter(iShownAfter)
{
    m_Forget.setSingleShot(true);
    m_Forget.callOnTimeout([this] { m_bCancelled = false; });
}

CProgressWindow::~CProgressWindow() = default;

// By the clock, or by what is left at this pace.
bool CProgressWindow::IsLong(float fDone) const
{
    const qint64 msSoFar = m_Since.elapsed();
    const auto fAfter = static_cast<float>(m_ShownAfter);
    return msSoFar >= m_ShownAfter ||
           (msSoFar >= EARLY_MS && static_cast<float>(msSoFar) > PLAINLY_LONGER * fAfter * fDone);
}

bool CProgressWindow::Report(QWidget* pParent, const char* pszWhat, float fDone)
{
    // Another text is another piece of work, also where the one before has not come to its end.
    if (m_What != pszWhat || !m_Since.isValid())
    {
        m_What = pszWhat;
        m_Since.start();
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
        if (!IsLong(fDone))
        {
            return true;
        }
        m_pDialog = std::make_unique<QProgressDialog>(
            QString::fromUtf8(Words(pszWhat)), Words("Cancel"), 0, STEPS, pParent);
        m_pDialog->setWindowModality(Qt::ApplicationModal);
        // The dialog would wait for a time of its own.
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
        // Who began the work asks for this before the event loop turns; later it would be taken for
        // the answer to other work.
        m_Forget.start(0);
        m_Since.invalidate();
        m_pDialog.reset();
    }
    return bGoOn;
}
