#include "editor/core/CProtectionStep.h"

#include "editor/core/CHostInput.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CWorld.h"
#include "host/Log.h"

CProtectionStep::CProtectionStep(CWorld& world,
                                 const CHostInput& input,
                                 uint64_t uBefore,
                                 uint64_t uAfter)
    : m_World(world)
    , m_Input(input)
    , m_Before(uBefore)
    , m_After(uAfter)
{
}

bool CProtectionStep::Prepare()
{
    if (m_Input.IsDragging())
    {
        CrashLog("[CProtectionStep] the protection cannot change while a button is held\n");
        return false;
    }
    return true;
}

void CProtectionStep::Undo()
{
    CVertexProtection& protection = m_World.GetCTerrain()->GetProtection();
    for (const SProtectedSquare& square : m_Squares)
    {
        protection.SetSquare(square.uX, square.uZ, square.before);
    }
    protection.SetId(m_Before);
}

void CProtectionStep::Redo()
{
    CVertexProtection& protection = m_World.GetCTerrain()->GetProtection();
    for (const SProtectedSquare& square : m_Squares)
    {
        protection.SetSquare(square.uX, square.uZ, square.after);
    }
    protection.SetId(m_After);
}

size_t CProtectionStep::GetMemory() const
{
    // Each square keeps the one of before, which it mostly does not share.
    return m_Squares.size() * (sizeof(SProtectedSquare) + sizeof(CVertexProtection::Square));
}
