#pragma once

#include "editor/core/IHostObserver.h"
#include "editor/core/SProtectAct.h"
#include "engine/terrain/CProtectionEdit.h"

#include <memory>
#include <string>
#include <vector>

class CHostHistory;
class CHostInput;
class CHostObservers;
class CWorld;

// What a person protects on the open level, each time as one step of the history. The observers are
// told before and after. A stroke that runs is ended before anything changes, and a step that is
// open ends before a stroke begins or the history moves, so that each stroke is undone under the
// protection that it was made under. Owned by CEditorHost. UI thread.
class CHostProtection : private IHostObserver
{
public:
    // Borrowed.
    CHostProtection(CWorld& world,
                    CHostInput& input,
                    CHostHistory& history,
                    CHostObservers& observers);
    ~CHostProtection() override;
    CHostProtection(const CHostProtection&) = delete;
    CHostProtection& operator=(const CHostProtection&) = delete;

    // False after one logged line, and nothing has changed: there is no level, the picture cannot
    // be used, or there is no memory. What changes nothing leaves no step.
    bool Do(const SProtectAct& act);

    // What is done between these two becomes one step. A second Begin ends the first one.
    void Begin();

    void End() { Finish(); }

    // Ends what was begun and takes it back.
    void Cancel();

    bool IsOpen() const { return m_Edit != nullptr; }

    // Whether the open level protects anything.
    bool IsAny() const;

private:
    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;

    bool Apply(const SProtectAct& act);
    bool Finish();  // false when there was no memory for the step, which is taken back then
    bool AddStep(); // as this

    CWorld& m_World;
    CHostInput& m_Input;
    CHostHistory& m_History;
    CHostObservers& m_Observers;
    std::unique_ptr<CProtectionEdit> m_Edit; // while a step is open
    std::vector<SProtectAct> m_Acts;         // of that step
};
