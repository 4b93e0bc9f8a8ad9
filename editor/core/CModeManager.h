#pragma once

#include "editor/core/IModeGuard.h"
#include "host/ModeManager.h"

#include <functional>
#include <memory>
#include <vector>

// The one mode manager of a host; owned by CEditorHost. Ids are 0, 1, 2 … in order of registration.
// A mode may leave itself, or make another one current, from inside any call it gets. Whoever asks
// for it, a mode is left in one way: a drag that runs is ended while the mode is still current, a
// suspended mode gets its input back, then the mode hears that it is left.
class CModeManager : public ModeManager
{
public:
    CModeManager();
    ~CModeManager() override; // as DestroyModes
    CModeManager(const CModeManager&) = delete;
    CModeManager& operator=(const CModeManager&) = delete;

    // A mode that is registered already keeps its id and group.
    int RegisterMode(IEditorMode* pMode, int iGroup) override;
    // Order of calls: IsAvailable of the new mode, CanDeactivate of the old one, the guard, the end
    // of a drag, Deactivate of the old one, Activate of the new one. The current mode again: true,
    // without any call.
    bool ActivateMode(int iModeId, int iParameter) override;
    bool DeactivateMode(int iParameter) override;
    bool CanDeactivateCurrentMode() override;

    int GetCurrentModeId() override { return m_CurrentId; }

    int GetCurrentModeGroup() override;
    bool IsModeAvailable(int iModeId) override; // false when unknown

    // Nothing happens without a current mode or without a block.
    void OnLButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock) override;
    void OnMouseMove(ViewId view,
                     uint32_t uFlags,
                     const SPointBlock* pPoint,
                     const SWheelBlock* pWheel,
                     const SStepBlock* pStep) override;
    void OnLButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock) override;
    void OnAction(ViewId view, int iAction, uint32_t uCount) override;
    void Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) override;

    // Called by the host, not by plug-ins.
    // How to end a drag that runs; it sends the mode its release. Nothing happens without a drag.
    void SetDragEnd(std::function<void()> endDrag) { m_EndDrag = std::move(endDrag); }

    void SetGuard(IModeGuard* pGuard) { m_Guard = pGuard; } // borrowed; null: none

    void RenderCurrentMode();
    bool SetModeCursor(); // true when the current mode set a cursor
    // A mode that is suspended, or not, already is not told again.
    void SuspendCurrentMode(bool bSuspended);
    // Leaves the current mode whether it likes it or not: the host is closing its plug-in.
    void ForceDeactivate();
    // Destroys all modes without another call to them; their ids are free again.
    void DestroyModes();

    // Low half x, high half y; each keeps its low 16 bits.
    static ViewPoint PackPoint(int32_t iX, int32_t iY);

private:
    struct SMode
    {
        std::unique_ptr<IEditorMode> pMode;
        int iGroup = MODE_GROUP_NONE;
    };

    IEditorMode* FindMode(int iModeId) const; // null when unknown
    void EndDrag();

    std::vector<SMode> m_Modes;
    int m_CurrentId = NO_MODE;
    bool m_bSuspended = false; // the current mode
    std::function<void()> m_EndDrag;
    IModeGuard* m_Guard = nullptr;
};
