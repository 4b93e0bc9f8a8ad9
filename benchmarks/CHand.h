#pragma once

#include "editor/app/CViewWidget.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMouseEvent>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

// A hand that draws: moves come from another thread, as from a mouse, whatever the window does. It
// keeps in mind how many had come and how many were taken when each frame was shown.
class CHand : public QObject
{
public:
    explicit CHand(CViewWidget& view)
        : m_View(view)
    {
        m_View.installEventFilter(this);
        m_Shown = connect(&m_View,
                          &QOpenGLWidget::frameSwapped,
                          [this] {
                              m_Frames.push_back({m_Come, m_Taken, m_Clock.nsecsElapsed()});
                          });
        m_Clock.start();
    }

    ~CHand() override { disconnect(m_Shown); }

    CHand(const CHand&) = delete;
    CHand& operator=(const CHand&) = delete;

    // Draws one stroke, fPixels to the right and centred in the view, with nMoves moves in
    // fSeconds. Returns when all of them have been taken and shown.
    void Drag(double fPixels, int nMoves, double fSeconds)
    {
        m_Global = m_View.mapToGlobal(QPointF());
        const QPointF from(m_View.width() * 0.5 - fPixels * 0.5, m_View.height() * 0.5);
        Send(QEvent::MouseMove, from, Qt::NoButton);
        Send(QEvent::MouseButtonPress, from, Qt::LeftButton);
        m_Frames.clear();
        m_Taken = 0;
        m_Come = 0;
        std::thread mouse(
            [&]
            {
                for (int i = 1; i <= nMoves; ++i)
                {
                    std::this_thread::sleep_for(std::chrono::duration<double>(fSeconds / nMoves));
                    const QPointF at = from + QPointF(fPixels * i / nMoves, 0.0);
                    ++m_Come;
                    QCoreApplication::postEvent(&m_View,
                                                Make(QEvent::MouseMove, at, Qt::LeftButton));
                }
            });
        while (m_Frames.empty() || m_Frames.back().nTaken < nMoves)
        {
            QCoreApplication::processEvents();
        }
        mouse.join();
        Send(QEvent::MouseButtonRelease, from + QPointF(fPixels, 0.0), Qt::NoButton);
    }

    // How many frames were shown without a move that had come before them: the most for any move.
    int GetMostBehind() const
    {
        int nMost = 0;
        for (int iMove = 1; iMove <= m_Come; ++iMove)
        {
            const auto nBehind =
                std::count_if(m_Frames.begin(),
                              m_Frames.end(),
                              [iMove](const SFrame& frame)
                              { return frame.nCome >= iMove && frame.nTaken < iMove; });
            nMost = std::max(nMost, static_cast<int>(nBehind));
        }
        return nMost;
    }

    // Seconds from frame to frame.
    std::vector<double> GetTimes() const
    {
        std::vector<double> times;
        for (size_t i = 1; i < m_Frames.size(); ++i)
        {
            times.push_back(static_cast<double>(m_Frames[i].nsAt - m_Frames[i - 1].nsAt) * 1e-9);
        }
        return times;
    }

    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        const bool bOurs = pEvent->type() == QEvent::MouseMove &&
                           static_cast<QMouseEvent*>(pEvent)->timestamp() == OURS;
        m_Taken += bOurs ? 1 : 0;
        return false;
    }

private:
    struct SFrame
    {
        int nCome;
        int nTaken;
        qint64 nsAt;
    };

    QMouseEvent* Make(QEvent::Type eType, const QPointF& at, Qt::MouseButtons buttons) const
    {
        const bool bMove = eType == QEvent::MouseMove;
        auto* pEvent = new QMouseEvent(eType,
                                       at,
                                       m_Global + at,
                                       bMove ? Qt::NoButton : Qt::LeftButton,
                                       buttons,
                                       Qt::NoModifier);
        pEvent->setTimestamp(OURS);
        return pEvent;
    }

    void Send(QEvent::Type eType, const QPointF& at, Qt::MouseButtons buttons)
    {
        const std::unique_ptr<QMouseEvent> pEvent(Make(eType, at, buttons));
        QCoreApplication::sendEvent(&m_View, pEvent.get());
    }

    static constexpr uint64_t OURS = 4711; // timestamp: the person's own moves do not count

    CViewWidget& m_View;
    QPointF m_Global; // of the view's corner
    QMetaObject::Connection m_Shown;
    QElapsedTimer m_Clock;
    std::atomic<int> m_Come = 0;
    int m_Taken = 0;
    std::vector<SFrame> m_Frames;
};
