#include "tellur/functions/CRampFunction.h"

#include "host/Log.h"
#include "host/ReflectionFields.h"
#include "tellur/functions/IdlePoint.h"
#include "tellur/functions/RampVectors.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/IHeightRows.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr SFunctionTraits TRAITS = {
    "RampFunction", "CRampFunction", "no cursor", "no class name", 2110, true};

// The bounding box of the strip's corners, clipped to the terrain.
SExtents GetRegion(const SVec3& first, const SVec3& second, const SVec3& side, float fX, float fZ)
{
    const SVec3 corners[] = {Add(first, side, 1.0F),
                             Add(first, side, -1.0F),
                             Add(second, side, 1.0F),
                             Add(second, side, -1.0F)};
    SExtents box = {corners[0], corners[0]};
    for (const SVec3& corner : corners)
    {
        box.min = {std::min(box.min.x, corner.x),
                   std::min(box.min.y, corner.y),
                   std::min(box.min.z, corner.z)};
        box.max = {std::max(box.max.x, corner.x),
                   std::max(box.max.y, corner.y),
                   std::max(box.max.z, corner.z)};
    }
    box.min = {std::max(box.min.x, 0.0F), std::max(box.min.y, 0.0F), std::max(box.min.z, 0.0F)};
    box.max.x = std::min(box.max.x, fX);
    box.max.z = std::min(box.max.z, fZ);
    return box;
}

} // namespace

const CRTTI CRampFunction::s_RTTI("CRampFunction",
                                  ENGINE_CLASS_FUNCTION,
                                  &CRampFunction::Create,
                                  &CTwoPointsFunction::s_RTTI,
                                  CRTTI::FLAG_NONE,
                                  &CRampFunction::RegisterFields);

struct CRampFunction::SRamp
{
    SVec3 start;
    float fDirX = 0.0F; // unit axis on the ground
    float fDirZ = 0.0F;
    float fLength = 0.0F; // on the ground
    float fRise = 0.0F;   // height from end to end
    float fHalfWidth = 0.0F;
    float fSide = 0.0F; // half width of the full effect
    float fPower = 1.0F;
    float fEnd = 0.0F; // fraction of the length that blends in at each end
    float fBand = 0.0F;
    bool bBand = false;
    int32_t iMode = mode_default;
};

CRTTIObject* CRampFunction::Create()
{
    return new CRampFunction;
}

void CRampFunction::RegisterFields(CRTTI& rtti)
{
    rtti.RegisterField(
        new CRTTIFieldEnum(RTTI_MEMBER_ADDRESS(CRampFunction, m_Mode), GetTerrainFunctionModes()),
        "m_Mode",
        "f:EDIT;e:COMBO;d:mode;");
    rtti.RegisterField(new CRTTIFieldFloat(RTTI_MEMBER_ADDRESS(CRampFunction, m_SideInterpolation)),
                       "m_SideInterpolation",
                       "f:EDIT;e:EDIT;d:side interpolation;");
    rtti.RegisterField(
        new CRTTIFieldFloat(RTTI_MEMBER_ADDRESS(CRampFunction, m_FrontBackInterpolation)),
        "m_FrontBackInterpolation",
        "f:EDIT;e:EDIT;d:front-back interpolation;");
}

CRampFunction::CRampFunction()
    : CTwoPointsFunction(TRAITS)
{
}

ITellurFunction* CRampFunction::Clone() const
{
    return new CRampFunction(*this);
}

CRampFunction::SRamp
CRampFunction::GetRamp(const ITellurBrush& brush, const SVec3& first, const SVec3& second) const
{
    const SVec3 axis = Normalize({second.x - first.x, 0.0F, second.z - first.z});
    const float fX = second.x - first.x;
    const float fZ = second.z - first.z;
    SRamp ramp;
    ramp.start = first;
    ramp.fDirX = axis.x;
    ramp.fDirZ = axis.z;
    ramp.fLength = std::sqrt(fX * fX + fZ * fZ);
    ramp.fRise = second.y - first.y;
    ramp.fHalfWidth = brush.GetExtent();
    ramp.fSide = ramp.fHalfWidth * m_SideInterpolation;
    ramp.fPower = brush.GetPowerModifier();
    ramp.fEnd = (1.0F - m_FrontBackInterpolation) * 0.5F;
    ramp.fBand = brush.GetVerticalDistance();
    ramp.bBand = CVerticalBand(ramp.fBand, 0.0F).IsActive();
    ramp.iMode = GetEffectiveMode(m_Mode);
    return ramp;
}

// The share of the ramp's effect fDistance from its axis at the fraction fAlong of its length.
float CRampFunction::GetWeight(const SRamp& ramp, float fDistance, float fAlong)
{
    float fWeight = ramp.fPower;
    if (!(fDistance < ramp.fSide))
    {
        // Outside the core the effect falls in a straight line, to 0 at the half width.
        const float fCore = ramp.fHalfWidth - ramp.fSide;
        fWeight =
            fCore > 0.0F ? (fCore - (fDistance - ramp.fSide)) * (1.0F / fCore) * ramp.fPower : 0.0F;
    }
    // The ends blend in the same way over their fraction of the length.
    const float fEndFactor = ramp.fEnd > 0.0F ? 1.0F / ramp.fEnd : 0.0F;
    if (fAlong < ramp.fEnd)
    {
        fWeight *= fAlong * fEndFactor;
    }
    else if (fAlong > 1.0F - ramp.fEnd)
    {
        fWeight *= (1.0F - fAlong) * fEndFactor;
    }
    return fWeight;
}

void CRampFunction::ApplyToRun(CVertList& verts, const SVertRun& run, const SRamp& ramp)
{
    float* pHeights = verts.GetHeights() + run.nFirst;
    const float* pWeights = verts.GetWeights() + run.nFirst;
    const float fZ = static_cast<float>(run.iz) * verts.GetStepZ() - ramp.start.z;
    for (size_t i = 0; i < run.nCount; ++i)
    {
        const float fX =
            static_cast<float>(run.ixFirst + static_cast<int>(i)) * verts.GetStepX() - ramp.start.x;
        // How far along the axis the vertex lies; what is left is its distance from the axis.
        const float u = fX * ramp.fDirX + fZ * ramp.fDirZ;
        if (u < 0.0F || u > ramp.fLength)
        {
            continue;
        }
        const float fAwayX = fX - ramp.fDirX * u;
        const float fAwayZ = fZ - ramp.fDirZ * u;
        const float fDistance = std::sqrt(fAwayX * fAwayX + fAwayZ * fAwayZ);
        if (fDistance >= ramp.fHalfWidth)
        {
            continue;
        }
        const float fAlong = u / ramp.fLength;
        float fDelta = ramp.start.y + ramp.fRise * fAlong - pHeights[i];
        // A ramp has its vertical distance around its own height at each vertex.
        if (ramp.bBand)
        {
            fDelta *= std::max(0.0F, (ramp.fBand - std::fabs(fDelta)) / ramp.fBand);
        }
        if ((ramp.iMode == mode_min && fDelta < 0.0F) || (ramp.iMode == mode_max && fDelta > 0.0F))
        {
            continue;
        }
        pHeights[i] += fDelta * (pWeights[i] * GetWeight(ramp, fDistance, fAlong));
    }
}

void CRampFunction::Process(ITerrainModification* pModification,
                            ITellurBrush* pBrush,
                            const SVec3& first,
                            const SVec3& second)
{
    if (pModification == nullptr)
    {
        CrashLog("[CRampFunction::Process] no modification interface\n");
        return;
    }
    if (pBrush == nullptr)
    {
        CrashLog("[CRampFunction::Process] no brush interface\n");
        return;
    }
    const SRamp ramp = GetRamp(*pBrush, first, second);
    if (!(ramp.fLength > 0.0F)) // both points on one spot: no ramp
    {
        NoteOutcome(EPointOutcome::NoLength);
        return;
    }
    const SVec3 side =
        Scale(Normalize({-(second.z - first.z), 0.0F, second.x - first.x}), ramp.fHalfWidth);
    const SExtents region =
        GetRegion(first, second, side, pModification->GetXSize(), pModification->GetZSize());
    CVertDataSet set;
    MakeStrip(*pModification, *pBrush, region, ramp, set);
    MergePoint(*pModification, set, this);
    if (!IsPointIdle())
    {
        return;
    }
    // What follows only finds a reason to tell; the first one that holds is told.
    if (set.GetVerts().IsEmpty() || !(ramp.fHalfWidth > 0.0F))
    {
        NoteOutcome(GetEmptyOutcome(*pBrush));
    }
    else if (ramp.fPower == 0.0F)
    {
        NoteOutcome(EPointOutcome::NoPower);
    }
    else if (!HasWeight(set))
    {
        NoteOutcome(EPointOutcome::Masked);
    }
    // A height that a ramp wants otherwise than it is can have stayed for one reason alone.
    else if (DiffersFromGround(*pModification, set))
    {
        NoteOutcome(EPointOutcome::Protected);
    }
    else if (ramp.bBand && IsStripWithoutBand(*pModification, *pBrush, region, ramp))
    {
        NoteOutcome(EPointOutcome::Band, ramp.fBand);
    }
}

// Fills the set with the heights of the ramp and of the ground beside it.
void CRampFunction::MakeStrip(ITerrainModification& modification,
                              ITellurBrush& brush,
                              const SExtents& region,
                              const SRamp& ramp,
                              CVertDataSet& set)
{
    modification.GetVerts(region, set);
    CVertList& verts = set.GetVerts();
    // The image of the brush plays no part in a ramp, its mask does.
    std::fill_n(verts.GetWeights(), verts.GetCount(), 1.0F);
    SExtents terrainBox;
    brush.ApplyMask(set, modification.GetTerrainExtents(terrainBox));
    for (const SVertRun& run : verts.GetRuns())
    {
        ApplyToRun(verts, run, ramp);
    }
}

// Whether the ramp would change the ground if its vertical distance were 0.
bool CRampFunction::IsStripWithoutBand(ITerrainModification& modification,
                                       ITellurBrush& brush,
                                       const SExtents& region,
                                       const SRamp& ramp)
{
    SRamp whole = ramp;
    whole.bBand = false;
    CVertDataSet set;
    MakeStrip(modification, brush, region, whole, set);
    return DiffersFromGround(modification, set);
}

// Whether the set has heights that are not those of the press.
bool CRampFunction::DiffersFromGround(const ITerrainModification& modification,
                                      const CVertDataSet& set)
{
    const CVertList& verts = set.GetVerts();
    const IHeightRows* pSource = modification.GetSrcRows();
    std::vector<float> row(static_cast<size_t>(modification.GetBufferSizeX()));
    bool bSame = true;
    for (const SVertRun& run : verts.GetRuns())
    {
        const float* pHeights = verts.GetHeights() + run.nFirst;
        bSame = bSame &&
                std::equal(
                    pHeights,
                    pHeights + run.nCount,
                    pSource->GetRow(run.ixFirst, run.iz, static_cast<int>(run.nCount), row.data()));
    }
    return !bSame;
}
