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
constexpr size_t EVEN_LEVELS = 2048;       // so many are where multiplying says, give or take one

struct SEvenLevels
{
    const float* pLevels;
    float fLast;    // index of the last one
    float fPerUnit; // levels a unit of height
};

// GetNearestLevel of many heights, which stay where none is near. The nearest level is the one that
// dividing finds or one beside it; the lower one of two comes first.
TELLUR_LOOP_BODY void
FindEvenTargets(const float* pHeights, float* pTargets, size_t nCount, const SEvenLevels& levels)
{
    const SEvenLevels own = levels;
    for (size_t i = 0; i < nCount; ++i)
    {
        const float fHeight = pHeights[i];
        const float fGuess = fHeight * own.fPerUnit;
        const float fAbove = fGuess > 0.0F ? fGuess : 0.0F;
        const auto iMiddle = static_cast<int32_t>(fAbove < own.fLast ? fAbove : own.fLast);
        const int32_t iLast = static_cast<int32_t>(own.fLast);
        const float fLower = own.pLevels[iMiddle > 0 ? iMiddle - 1 : 0];
        const float fMiddle = own.pLevels[iMiddle];
        const float fUpper = own.pLevels[iMiddle < iLast ? iMiddle + 1 : iLast];
        float fBest = FARTHEST_LEVEL;
        float fTarget = -1.0F;
        const float fToLower = std::fabs(fLower - fHeight);
        fTarget = fToLower < fBest ? fLower : fTarget;
        fBest = fToLower < fBest ? fToLower : fBest;
        const float fToMiddle = std::fabs(fMiddle - fHeight);
        fTarget = fToMiddle < fBest ? fMiddle : fTarget;
        fBest = fToMiddle < fBest ? fToMiddle : fBest;
        const float fToUpper = std::fabs(fUpper - fHeight);
        fTarget = fToUpper < fBest ? fUpper : fTarget;
        pTargets[i] = fTarget > 0.0F ? fTarget : fHeight;
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

// Whether they are those of the fields and of this terrain.
bool CPosterizeFunction::HasLevels(const ITerrainModification& modification) const
{
    const bool bLimitNow = m_bNoLimit && modification.GetSrcRows() != nullptr;
    return m_NumHeightDivisions == m_LevelCount && !m_Levels.IsEmpty() && !bLimitNow;
}

void CPosterizeFunction::FindTargets(const float* pHeights, float* pTargets, size_t nCount) const
{
    const size_t nLevels = m_Levels.GetCount();
    if (nLevels <= EVEN_LEVELS)
    {
        const SEvenLevels levels = {m_Levels.Get(),
                                    static_cast<float>(nLevels - 1),
                                    static_cast<float>(nLevels) / *(m_Levels.end() - 1)};
        CVectorLoop<FindEvenTargets>::Run(pHeights, pTargets, nCount, levels);
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
    rule.eRule = EVertexRule::Move;
    rule.eMerge = GetMergeRule();
    rule.bFromDest = m_UseOnlyDestBuffer;
    rule.fStroke = operation.fWeight;
    rule.bRaise = m_Mode != mode_max;
    rule.bLower = m_Mode != mode_min;
    CVerticalBand(operation.pBrush->GetVerticalDistance(), operation.point.y).SetIn(rule);
    return HasLevels(*operation.pModification);
}

void CPosterizeFunction::GetTargets(
    int /*iX*/, int /*iZ*/, int iCount, const float* pHeights, float* pTargets)
{
    FindTargets(pHeights, pTargets, static_cast<size_t>(iCount));
}
