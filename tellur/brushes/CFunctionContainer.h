#pragma once

#include <memory>
#include <vector>

class ITellurFunction;

// One prototype of each terrain function, in order of insertion; brushes clone them. Owned by the
// plug-in object, owns the prototypes. Names are compared exactly.
class CFunctionContainer
{
public:
    CFunctionContainer();
    virtual ~CFunctionContainer();
    CFunctionContainer(const CFunctionContainer&) = delete;
    CFunctionContainer& operator=(const CFunctionContainer&) = delete;

    // Takes ownership on success. False, with one logged line, for null and for a name that is
    // there already; the caller keeps the object then.
    bool AddFunction(ITellurFunction* pFunction);
    const ITellurFunction* FindFunction(const char* pszClassName) const; // null when unknown

    const std::vector<std::unique_ptr<ITellurFunction>>& GetFunctions() const
    {
        return m_Functions;
    }

    void Clear();

private:
    std::vector<std::unique_ptr<ITellurFunction>> m_Functions;
};
