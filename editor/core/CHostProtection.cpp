#include "editor/core/CHostProtection.h"

#include "editor/core/CHostHistory.h"
#include "editor/core/CHostInput.h"
#include "editor/core/CHostObservers.h"
#include "editor/core/CProtectionStep.h"
#include "editor/core/ProtectionPicture.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/ProtectedAreas.h"
#include "engine/world/CWorld.h"
#include "host/Log.h"

#include <utility>

namespace
{

// For the list of steps.
const char* GetStepText(const SProtectAct& act)
{
    switch (act.eKind)
    {
    case EProtect::Disc:
        return act.bProtected ? Words("Protect area") : Words("Unprotect area");
    case EProtect::Invert:
        return Words("Protect the rest");
    case EProtect::Clear:
        return Words("Protect nothing");
    case EProtect::Grow:
        return Words("Protect more around");
    case EProtect::Slope:
        return Words("Protect slopes");
    case EProtect::Heights:
        return Words("Protect heights");
    case EProtect::Picture:
        break;
    }
    return Words("Protect by picture");
}

} // namespace

CHostProtection::CHostProtection(CWorld& world,
                                 CHostInput& input,
                                 CHostHistory& history,
                                 CHostObservers& observers)
    : m_World(world)
    , m_Input(input)
    , m_History(history)
    , m_Observers(observers)
{
    m_Observers.Add(this); // the first one, so that the others hear of the step before the event
}

CHostProtection::~CHostProtection()
{
    m_Observers.Remove(this);
}

void CHostProtection::OnBeforeEvent(const SHostEvent& event)
{
    if (event.eKind != EHostEvent::MouseMove && event.eKind != EHostEvent::Protected)
    {
        End();
    }
}

bool CHostProtection::IsAny() const
{
    const CTerrain* pTerrain = m_World.GetCTerrain();
    return pTerrain != nullptr && !pTerrain->GetProtection().IsEmpty();
}

bool CHostProtection::Do(const SProtectAct& act)
{
    if (m_World.GetCTerrain() == nullptr)
    {
        CrashLog("[CHostProtection::Do] there is no level\n");
        return false;
    }
    const bool bAlone = !IsOpen();
    if (bAlone)
    {
        Begin();
    }
    if (!IsOpen())
    {
        return false;
    }
    bool bDone = false;
    const bool bMemory = m_Input.Guard("CHostProtection::Do", [&] { bDone = Apply(act); });
    if (!bMemory || (bAlone && !bDone))
    {
        Cancel();
    }
    else if (bAlone && !Finish())
    {
        return false;
    }
    return bMemory && bDone;
}

bool CHostProtection::Apply(const SProtectAct& act)
{
    m_Acts.push_back(act);
    switch (act.eKind)
    {
    case EProtect::Disc:
        ProtectDisc(*m_Edit, act.a, act.b, act.c, act.bProtected);
        return true;
    case EProtect::Invert:
        InvertProtection(*m_Edit);
        return true;
    case EProtect::Clear:
        ClearProtection(*m_Edit);
        return true;
    case EProtect::Grow:
        GrowProtection(*m_Edit, act.a > 0.0F ? static_cast<uint32_t>(act.a) : 0);
        return true;
    case EProtect::Slope:
        ProtectSteep(*m_Edit, act.a);
        return true;
    case EProtect::Heights:
        ProtectHeights(*m_Edit, act.a, act.b);
        return true;
    case EProtect::Picture:
        break;
    }
    return ReadProtection(act.strPath, *m_Edit, false);
}

void CHostProtection::Begin()
{
    End();
    m_Input.EndDrag();
    CTerrain* pTerrain = m_World.GetCTerrain();
    std::unique_ptr<CProtectionEdit> pEdit;
    const auto make = [&]
    {
        pEdit = std::make_unique<CProtectionEdit>(*pTerrain);
    };
    if (pTerrain != nullptr && m_Input.Guard("CHostProtection::Begin", make))
    {
        m_Observers.TellBefore({.eKind = EHostEvent::Protected});
        m_Edit = std::move(pEdit);
        m_Acts.clear();
    }
}

bool CHostProtection::Finish()
{
    bool bWhole = !IsOpen();
    if (IsOpen() && !m_Input.Guard("CHostProtection::End", [&] { bWhole = AddStep(); }))
    {
        Cancel();
    }
    return bWhole;
}

// All memory is asked for while the edit can still take everything back.
bool CHostProtection::AddStep()
{
    const uint64_t uBefore = m_Edit->GetIdBefore();
    CVertexProtection& protection = m_World.GetCTerrain()->GetProtection();
    auto pStep = std::make_unique<CProtectionStep>(m_World, m_Input, uBefore, protection.GetId());
    std::string strText = m_Acts.empty() ? "" : GetStepText(m_Acts.front());
    std::vector<SProtectedSquare> squares = m_Edit->Take();
    m_Edit.reset();
    const bool bChanged = !squares.empty();
    bool bAdded = false;
    if (bChanged)
    {
        pStep->SetSquares(std::move(squares));
        const size_t nBytes = pStep->GetMemory();
        bAdded = m_History.AddStep(pStep.release(), std::move(strText), nBytes);
    }
    else
    {
        protection.SetId(uBefore); // squares that are as they were may have come and gone
    }
    m_Observers.Tell({.eKind = EHostEvent::Protected, .pProtected = bAdded ? &m_Acts : nullptr});
    return bAdded || !bChanged;
}

void CHostProtection::Cancel()
{
    if (IsOpen())
    {
        m_Edit->TakeBack();
        m_Edit.reset();
        m_Observers.Tell({.eKind = EHostEvent::Protected});
    }
}
