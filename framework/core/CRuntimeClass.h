#pragma once

class CFormView;

// Names a window class that the host may create by its name. Static storage of the library that
// implements the class.
class CRuntimeClass
{
public:
    using FCreate = CFormView* (*)(); // a new view without a window yet, owned by the caller

    // pszName: borrowed, static storage. pCreate: null for a class that has no window in this
    // build.
    constexpr CRuntimeClass(const char* pszName, FCreate pCreate)
        : m_pszName(pszName)
        , m_pCreate(pCreate)
    {
    }

    const char* GetName() const { return m_pszName; }

    CFormView* Create() const { return m_pCreate != nullptr ? m_pCreate() : nullptr; }

private:
    const char* m_pszName;
    FCreate m_pCreate;
};
