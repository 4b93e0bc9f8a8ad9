#include "editor/app/CFileDrop.h"

#include "editor/app/CProgressWindow.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <utility>

CFileDrop::CFileDrop(QWidget& window,
                     const CProgressWindow& progress,
                     std::function<void(const std::string& strPath)> open)
    : m_Progress(progress)
    , m_Open(std::move(open))
{
    m_Timer.setSingleShot(true);
    m_Timer.callOnTimeout(this, [this] { Open(); });
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool CFileDrop::eventFilter(QObject* /*pWindow*/, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::DragEnter)
    {
        auto* pEnter = static_cast<QDragEnterEvent*>(pEvent);
        if (pEnter->mimeData()->hasUrls() && pEnter->mimeData()->urls().front().isLocalFile())
        {
            pEnter->acceptProposedAction();
        }
        return true;
    }
    if (pEvent->type() == QEvent::Drop)
    {
        auto* pDrop = static_cast<QDropEvent*>(pEvent);
        m_Path = pDrop->mimeData()->urls().front().toLocalFile().toStdString();
        pDrop->acceptProposedAction();
        m_Timer.start(0); // the other program waits until the drop is over
        return true;
    }
    return false;
}

void CFileDrop::Open()
{
    constexpr int AGAIN_MS = 100;
    if (m_Progress.IsWorking())
    {
        m_Timer.start(AGAIN_MS); // the work takes events, and must not meet another level
        return;
    }
    m_Open(std::exchange(m_Path, {}));
}
