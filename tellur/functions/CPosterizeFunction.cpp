#include "tellur/functions/CPosterizeFunction.h"

#include "host/Log.h"
#include "host/ReflectionFields.h"
#include "host/VectorLoop.h"
#include "tellur/functions/HeightLoops.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr SFunctionTraits TRAITS = {
    "PosterizeFunction", "CPosterizeFunction", "no cursor handle", "no name", 2115};
constexpr float FARTHEST_LEVEL = 10000.0F; // a level at least as far away is none
constexpr int32_t MAX_LEVELS = 1 << 24;    // more than a float tells apart
constexpr size_t FEW_LEVELS = 16;          // looking at all of them is faster than searching
constexpr size_t CHUNK = 64;               // heights at a time

// GetNearestLevel of up to CHUNK heights, which stay where none is near: one level after the other,
// from the lowest on.
TELLUR_LOOP_BODY void FindTargetsOfFew(const float* __restrict pHeights,
                                       float* __restrict pTargets,
                                       size_t nCount,
                                       const float* pLevels,
                                       size_t nLevels)
{
    float aBest[CHUNK];
    float aTarget[CHUNK];
    for (size_t i = 0; i < nCount; ++i)
    {
        aBest[i] = FARTHEST_LEVEL;
        aTarget[i] = -1.0F;
    }
    // Levels come from the lowest on and only a nearer one wins, so the lower of two equal ones
    // stays, as in GetNearestLevel.
    for (size_t n = 0; n < nLevels; ++n)
    {
        const float fLevel = pLevels[n];
        for (size_t i = 0; i < nCount; ++i)
        {
            const float fAway = std::fabs(fLevel - pHeights[i]);
            const bool bNearer = fAway < aBest[i];
            aTarget[i] = bNearer ? fLevel : aTarget[i];
            aBest[i] = bNearer ? fAway : aBest[i];
        }
    }
    for (size_t i = 0; i < nCount; ++i)
    {
        pTargets[i] = aTarget[i] > 0.0F ? aTarget[i] : pHeights[i];
    }
}

} // namespace

const CRTTI CPosterizeFunction::s_RTTI("CPosterizeFunction",
                                       ENGINE_CLASS_FUNCTION,
                                       &CPosterizeFunction::Create,
                                       &CPainterFunction::s_RTTI,
                                       CRTTI::FLAG_NONE,
                                       &CPosterizeFunction::RegisterFields);

CRTTIObject* CPosterizeFunction::Create()
{
    return new CPosterizeFunction;
}

void CPosterizeFunction::RegisterFields(CRTTI& rtti)
{
    rtti.RegisterField(new CRTTIFieldEnum(RTTI_MEMBER_ADDRESS(CPosterizeFunction, m_Mode),
                                          GetTerrainFunctionModes()),
                       "m_Mode",
                       "f:EDIT;e:COMBO;d:mode;");
    rtti.RegisterField(
        new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CPosterizeFunction, m_NumHeightDivisions)),
        "m_NumHeightDivisions",
        "f:EDIT;e:EDIT;d:number of height divisions;");
    rtti.RegisterField(
        new CRTTIFieldBool(RTTI_MEMBER_ADDRESS(CPosterizeFunction, m_UseOnlyDestBuffer)),
        "m_UseOnlyDestBuffer",
        "f:EDIT;e:CHECKBOX;d:use only destination buffer;");
}

CPosterizeFunction::CPosterizeFunction()
    : CPainterFunction(TRAITS)
{
}

CPosterizeFunction::CPosterizeFunction(const CPosterizeFunction& other)
    : CPainterFunction(other)
    , m_Mode(other.m_Mode)
    , m_NumHeightDivisions(other.m_NumHeightDivisions)
    , m_UseOnlyDestBuffer(other.m_UseOnlyDestBuffer)
{
}

ITellurFunction* CPosterizeFunction::Clone() const
{
    return new CPosterizeFunction(*this);
}

float CPosterizeFunction::MergeHeight(float fSrc, float fDst, float fCandidate) const
{
    return m_UseOnlyDestBuffer ? fCandidate : KeepStrongest(fSrc, fDst, fCandidate);
}

EMergeRule CPosterizeFunction::GetMergeRule() const
{
    return m_UseOnlyDestBuffer ? EMergeRule::Candidate : EMergeRule::Strongest;
}

// False when there is no memory for them.
bool CPosterizeFunction::CalculateLevels(float fMaxHeight)
{
    m_Levels.Clear();
    m_LevelCount = m_NumHeightDivisions;
    m_bNoLimit = fMaxHeight < 0.0F; // without a terrain: the levels are none for another drag
    if (m_NumHeightDivisions <= 0 || m_NumHeightDivisions > MAX_LEVELS)
    {
        return true;
    }
    if (!m_Levels.Resize(static_cast<size_t>(m_NumHeightDivisions)))
    {
        return false;
    }
    const float fStep = fMaxHeight / static_cast<float>(m_NumHeightDivisions);
    float fLevel = 0.0F;
    for (float& fEntry : m_Levels)
    {
        fLevel += fStep;
        fEntry = fLevel;
    }
    return true;
}

// The lower one of two that are equally near; -1 when none is near enough.
float CPosterizeFunction::GetNearestLevel(float fHeight) const
{
    const float* above = std::lower_bound(m_Levels.begin(), m_Levels.end(), fHeight);
    float fBest = FARTHEST_LEVEL;
    float fTarget = -1.0F;
    if (above != m_Levels.begin() && std::fabs(*(above - 1) - fHeight) < fBest)
    {
        fTarget = *(above - 1);
        fBest = std::fabs(fTarget - fHeight);
    }
    if (above != m_Levels.end() && std::fabs(*above - fHeight) < fBest)
    {
        fTarget = *above;
    }
    return fTarget;
}

void CPosterizeFunction::DoOperation(const SOperation& operation)
{
    if (operation.pBrush == nullptr)
    {
        CrashLog("[CPosterizeFunction::DoOperation] no brush interface\n");
        return;
    }
    if (operation.pModification == nullptr)
    {
        CrashLog("[CPosterizeFunction::DoOperation] no modification interface\n");
        return;
    }
    const bool bMemory =
        HasLevels(*operation.pModification) || CalculateLevels(operation.pModification->GetYSize());
    if (m_Levels.IsEmpty())
    {
        CrashLog("[CPosterizeFunction::DoOperation] failed to calculate height divisions array. "
                 "Operation canceled\n");
        if (!bMemory)
        {
            operation.pModification->GiveUp(); // the operations that follow may find some
        }
        return;
    }
    CVertList& verts = operation.pVerts->GetVerts();
    if (!m_Targets.Reserve(verts.GetCount()))
    {
        operation.pModification->GiveUp();
        return;
    }
    FindTargets(verts.GetHeights(), m_Targets.Get(), verts.GetCount());
    const CVerticalBand band(operation.pBrush->GetVerticalDistance(), operation.point.y);
    MoveTowards(verts, m_Targets.Get(), operation.fWeight, band, m_Mode);
}

// Whether the levels are as many as the field says now. Those that were made without a terrain do
// not count once there is one; a new height limit alone does not make them anew.
bool CPosterizeFunction::HasLevels(const ITerrainModification& modification) const
{
    const bool bLimitNow = m_bNoLimit && modification.GetSrcRows() != nullptr;
    return m_NumHeightDivisions == m_LevelCount && !m_Levels.IsEmpty() && !bLimitNow;
}

// Few levels are all compared with a chunk of heights at a time, many are searched for each height.
void CPosterizeFunction::FindTargets(const float* pHeights, float* pTargets, size_t nCount) const
{
    if (m_Levels.GetCount() <= FEW_LEVELS)
    {
        for (size_t i = 0; i < nCount; i += CHUNK)
        {
            CVectorLoop<FindTargetsOfFew>::Run(pHeights + i,
                                               pTargets + i,
                                               std::min(CHUNK, nCount - i),
                                               m_Levels.Get(),
                                               m_Levels.GetCount());
        }
        return;
    }
    for (size_t i = 0; i < nCount; ++i)
    {
        const float fTarget = GetNearestLevel(pHeights[i]);
        pTargets[i] = fTarget > 0.0F ? fTarget : pHeights[i];
    }
}

// The first operation makes the levels, with a set, and says what it misses.
bool CPosterizeFunction::GetRule(const SOperation& operation, SVertexRule& rule)
{
    SetMoveRule(operation, m_Mode, rule);
    return HasLevels(*operation.pModification);
}

STargetRows CPosterizeFunction::GetTargets(const SPointPart& part, float* pScratch)
{
    for (int iRow = 0; iRow < part.iRows; ++iRow)
    {
        FindTargets(part.pHeights + static_cast<ptrdiff_t>(iRow) * PITCH,
                    pScratch + static_cast<ptrdiff_t>(iRow) * PITCH,
                    static_cast<size_t>(part.iColumns));
    }
    return {pScratch, PITCH};
}
