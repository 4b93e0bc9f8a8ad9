#include "tellur/plugin/ToolAmount.h"

#include "host/Reflection.h"
#include "host/Terrain.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr float MOST_COUNT = 1000.0F;
// The one number that says what a function does; ramp and point height have none.
constexpr const char* AMOUNT_FIELDS[] = {"m_Height", "m_NumHeightDivisions", "m_NeighbourhoodSize"};
constexpr const char* PICK_FIELD = "m_PickHeight"; // the ground gives the amount
constexpr float NO_NUMBER = std::numeric_limits<float>::quiet_NaN();

CRTTIField* FindAmountField(const CTellurBrush& brush)
{
    const CRTTIObject* pObject = brush.GetRTTIObject();
    CRTTIField* pFound = nullptr;
    for (const char* pszField : AMOUNT_FIELDS)
    {
        CRTTIField* pField = pObject != nullptr ? pObject->FindField(pszField) : nullptr;
        pFound = pField != nullptr ? pField : pFound;
    }
    return pFound;
}

} // namespace

float GetAmountOf(const CTellurBrush& brush)
{
    const CRTTIField* pField = FindAmountField(brush);
    float fHeight = NO_NUMBER;
    int32_t iCount = 0;
    if (pField != nullptr && brush.GetRTTIObject()->GetFieldIntEditor(pField, iCount))
    {
        return static_cast<float>(iCount);
    }
    if (pField != nullptr)
    {
        brush.GetRTTIObject()->GetFieldFloatEditor(pField, fHeight);
    }
    return fHeight;
}

bool PicksHeight(const CTellurBrush& brush)
{
    const CRTTIObject* pObject = brush.GetRTTIObject();
    const CRTTIField* pField = pObject != nullptr ? pObject->FindField(PICK_FIELD) : nullptr;
    bool bPicks = false;
    return pField != nullptr && pObject->GetFieldBoolEditor(pField, bPicks) && bPicks;
}

void SetPicksHeight(CTellurBrush& brush, bool bPicks)
{
    CRTTIObject* pObject = brush.GetRTTIObject();
    CRTTIField* pField = pObject != nullptr ? pObject->FindField(PICK_FIELD) : nullptr;
    if (pField != nullptr)
    {
        pObject->SetFieldBoolEditor(pField, bPicks);
    }
}

void SetAmountOf(CTellurBrush& brush, float fValue)
{
    CRTTIField* pField = FindAmountField(brush);
    if (pField == nullptr)
    {
        return;
    }
    const Terrain* pTerrain = GetCurrentTerrain();
    const float fMost = pTerrain != nullptr ? std::fabs(pTerrain->GetSize().y) : std::fabs(fValue);
    CRTTIObject* pObject = brush.GetRTTIObject();
    // Only the one of the two that fits the field's type writes it.
    pObject->SetFieldIntEditor(
        pField, static_cast<int32_t>(std::lround(std::clamp(fValue, 1.0F, MOST_COUNT))));
    pObject->SetFieldFloatEditor(pField, std::clamp(fValue, -fMost, fMost));
}
