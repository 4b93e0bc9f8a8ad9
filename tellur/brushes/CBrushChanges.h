#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class CBrushContainer;

// Changes of the list of predefined brushes that can be taken back and done again, some hundred of
// them. Brushes are told by their place, from 0, because a list may have a name twice. Brushes that
// were removed live on here, as they were, until nothing can bring them back. What others append to
// the list does not disturb. Owned by the plug-in object.
//
// All of them: false, with one line without a line feed in strWhy, when nothing was changed.
class CBrushChanges
{
public:
    explicit CBrushChanges(CBrushContainer& brushes); // borrowed
    ~CBrushChanges();
    CBrushChanges(const CBrushChanges&) = delete;
    CBrushChanges& operator=(const CBrushChanges&) = delete;

    bool Rename(int32_t iPlace, const std::string& strName, std::string& strWhy);
    bool Remove(int32_t iPlace, std::string& strWhy);
    // Puts a copy behind the brush. Without a name it gets the next number of the brush's own.
    bool Duplicate(int32_t iPlace, const std::string& strName, std::string& strWhy);
    // iTo: the place where the brush is afterwards.
    bool Move(int32_t iFrom, int32_t iTo, std::string& strWhy);

    bool TakeBack(std::string& strWhy);
    bool DoAgain(std::string& strWhy); // what was taken back last, unless there was a change since

    void Clear(); // nothing can be taken back any more; what was removed goes

private:
    struct SStep; // one change, with what it takes to do it

    bool IsPlace(int32_t iPlace, std::string& strWhy) const;
    bool Fits(const SStep& step) const;
    SStep Apply(SStep step); // gives the step that takes it back
    void Do(SStep step);
    bool Turn(std::vector<SStep>& from, std::vector<SStep>& to, std::string& strWhy);

    CBrushContainer& m_Brushes;
    std::vector<SStep> m_Back; // the latest last
    std::vector<SStep> m_Again;
};
