#pragma once

#include "editor/app/COverlayBar.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <functional>

class QComboBox;
class QLabel;
class QProgressBar;

// How fast a script is played where a person sees it.
enum class EScriptSpeed
{
    Fast,   // a picture now and then
    Smooth, // as many pictures as an eye sees
    Slow,   // each event for itself, so that one can follow it
};

// Says at the upper edge of the views how far a script is, and lets a person stop it and choose how
// fast it is played. While it is shown every other press is dropped, since it would change what
// the script works on, and what of the window does not answer is grey; Escape stops. Owned by the
// window.
class CScriptBar : public COverlayBar
{
public:
    // iSpeed: an EScriptSpeed, kept there; borrowed.
    CScriptBar(QMainWindow& window, int& iSpeed);

    // A script of so many calls begins.
    void Begin(const QString& strName, size_t nCalls);
    // One more call was played: draws and lets the window answer, as often as the speed says.
    // requestFrames: the views show what has changed. False when the person wants it to stop.
    bool Step(const std::function<void()>& requestFrames);
    // The script has ended. Whether something else was pressed, which is left out.
    bool End();

    void Stop() { m_bStop = true; }

    bool IsStopped() const { return m_bStop; }

    bool IsPlaying() const { return m_nCalls > 0; }

    size_t GetPlayedCount() const { return m_nPlayed; }

    size_t GetCallCount() const { return m_nCalls; }

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    bool IsOurs(const QObject* pWatched) const;
    void GreyOut();
    void LightUp();

    int& m_Speed;
    QLabel* m_pName; // the bar's
    QProgressBar* m_pProgress;
    QComboBox* m_pSpeed;
    QElapsedTimer m_SinceFrame;
    QTimer m_Pause;                    // of a slow one
    QList<QPointer<QWidget>> m_Greyed; // the window's
    QPointer<QWidget> m_pFocus;        // what had the keyboard before
    size_t m_nCalls = 0;               // 0: no script is played
    size_t m_nPlayed = 0;
    bool m_bStop = false;
    bool m_bDropped = false;
};
