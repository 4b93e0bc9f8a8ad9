#include "tellur/brushes/CBrushChanges.h"

#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CTellurBrush.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace
{

constexpr size_t MOST_STEPS = 200;

enum class EKind
{
    Insert,
    Take,
    Move,
    Rename,
};

// A library is a text whose names stand in one line each, and a list shows nothing for no name.
bool CheckName(const std::string& strName, std::string& strWhy)
{
    const bool bLine = std::none_of(
        strName.begin(), strName.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; });
    if (!bLine || strName.find_first_not_of(' ') == std::string::npos)
    {
        strWhy = bLine ? "a brush has to have a name" : "the name of a brush is one line";
        return false;
    }
    return true;
}

} // namespace

struct CBrushChanges::SStep
{
    EKind eKind = EKind::Move;
    size_t iPlace = 0;
    size_t iTo = 0;                                 // of a move
    std::string strName = {};                       // of a rename
    std::unique_ptr<CTellurBrush> pBrush = nullptr; // of an insertion
    // States of the list between which the step leads; 0 for a step that is new.
    uint64_t uBefore = 0;
    uint64_t uAfter = 0;
};

CBrushChanges::CBrushChanges(CBrushContainer& brushes)
    : m_Brushes(brushes)
{
}

CBrushChanges::~CBrushChanges() = default;

bool CBrushChanges::IsPlace(int32_t iPlace, std::string& strWhy) const
{
    const size_t nBrushes = m_Brushes.GetPredefined().size();
    if (iPlace >= 0 && static_cast<size_t>(iPlace) < nBrushes)
    {
        return true;
    }
    strWhy = "there is no predefined brush " + std::to_string(iPlace) + ", there are " +
             std::to_string(nBrushes);
    return false;
}

bool CBrushChanges::Rename(int32_t iPlace, const std::string& strName, std::string& strWhy)
{
    if (!IsPlace(iPlace, strWhy) || !CheckName(strName, strWhy))
    {
        return false;
    }
    Do({.eKind = EKind::Rename, .iPlace = static_cast<size_t>(iPlace), .strName = strName});
    return true;
}

bool CBrushChanges::Remove(int32_t iPlace, std::string& strWhy)
{
    if (!IsPlace(iPlace, strWhy))
    {
        return false;
    }
    Do({.eKind = EKind::Take, .iPlace = static_cast<size_t>(iPlace)});
    return true;
}

bool CBrushChanges::Duplicate(int32_t iPlace, const std::string& strName, std::string& strWhy)
{
    if (!IsPlace(iPlace, strWhy) || (!strName.empty() && !CheckName(strName, strWhy)))
    {
        return false;
    }
    const auto iSource = static_cast<size_t>(iPlace);
    std::unique_ptr<CTellurBrush> pCopy(m_Brushes.GetPredefined()[iSource]->Clone());
    if (strName.empty())
    {
        m_Brushes.GetNextBrushName(pCopy.get());
    }
    else
    {
        pCopy->SetName(strName.c_str());
    }
    Do({.eKind = EKind::Insert, .iPlace = iSource + 1, .pBrush = std::move(pCopy)});
    return true;
}

bool CBrushChanges::Move(int32_t iFrom, int32_t iTo, std::string& strWhy)
{
    if (!IsPlace(iFrom, strWhy) || !IsPlace(iTo, strWhy))
    {
        return false;
    }
    if (iFrom != iTo) // which is no change, and nothing to save or to take back
    {
        Do({.eKind = EKind::Move,
            .iPlace = static_cast<size_t>(iFrom),
            .iTo = static_cast<size_t>(iTo)});
    }
    return true;
}

bool CBrushChanges::TakeBack(std::string& strWhy)
{
    return Turn(m_Back, m_Again, strWhy);
}

bool CBrushChanges::DoAgain(std::string& strWhy)
{
    return Turn(m_Again, m_Back, strWhy);
}

void CBrushChanges::Clear()
{
    m_Back.clear();
    m_Again.clear();
}

// A list that somebody has emptied meanwhile may lack the place.
bool CBrushChanges::Fits(const SStep& step) const
{
    const size_t nBrushes = m_Brushes.GetPredefined().size();
    const size_t nPlaces = step.eKind == EKind::Insert ? nBrushes + 1 : nBrushes;
    return step.iPlace < nPlaces && step.iTo < nPlaces;
}

CBrushChanges::SStep CBrushChanges::Apply(SStep step)
{
    SStep back = {.iPlace = step.iPlace};
    back.uAfter = m_Brushes.GetState();
    switch (step.eKind)
    {
    case EKind::Insert:
        back.eKind = EKind::Take;
        m_Brushes.InsertPredefined(step.iPlace, std::move(step.pBrush));
        break;
    case EKind::Take:
        back.eKind = EKind::Insert;
        back.pBrush = m_Brushes.TakePredefined(step.iPlace);
        break;
    case EKind::Move:
        back.iPlace = step.iTo;
        back.iTo = step.iPlace;
        m_Brushes.InsertPredefined(step.iTo, m_Brushes.TakePredefined(step.iPlace));
        break;
    case EKind::Rename:
    {
        const char* pszOld = m_Brushes.GetPredefined()[step.iPlace]->GetName();
        back.eKind = EKind::Rename;
        back.strName = pszOld != nullptr ? pszOld : "";
        m_Brushes.RenamePredefined(step.iPlace, step.strName.c_str());
        break;
    }
    }
    // The list is the very one of before only where nobody has appended to it meanwhile.
    if (step.uBefore != 0 && step.uBefore == back.uAfter)
    {
        m_Brushes.SetState(step.uAfter);
    }
    back.uBefore = m_Brushes.GetState();
    return back;
}

void CBrushChanges::Do(SStep step)
{
    m_Again.clear();
    if (m_Back.size() >= MOST_STEPS)
    {
        m_Back.erase(m_Back.begin());
    }
    m_Back.push_back(Apply(std::move(step)));
}

bool CBrushChanges::Turn(std::vector<SStep>& from, std::vector<SStep>& to, std::string& strWhy)
{
    if (!from.empty() && !Fits(from.back()))
    {
        Clear();
    }
    if (from.empty())
    {
        strWhy = "there is no change of the brushes to take back or to do again";
        return false;
    }
    SStep step = std::move(from.back());
    from.pop_back();
    to.push_back(Apply(std::move(step)));
    return true;
}
