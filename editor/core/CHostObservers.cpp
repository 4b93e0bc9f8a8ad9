#include "editor/core/CHostObservers.h"

#include "editor/core/IHostObserver.h"
#include "host/Log.h"

#include <algorithm>
#include <new>

void CHostObservers::Add(IHostObserver* pObserver)
{
    m_Observers.push_back(pObserver);
}

void CHostObservers::Remove(IHostObserver* pObserver)
{
    m_Observers.erase(std::remove(m_Observers.begin(), m_Observers.end(), pObserver),
                      m_Observers.end());
}

template <typename TTell> void CHostObservers::TellEach(TTell tell)
{
    for (IHostObserver* pObserver : m_Observers)
    {
        try
        {
            tell(*pObserver);
        }
        catch (const std::bad_alloc&)
        {
            CrashLog("[CEditorHost] not enough memory to follow what happens\n");
            pObserver->OnMissedEvent();
        }
    }
}

void CHostObservers::TellBefore(const SHostEvent& event)
{
    TellEach([&](IHostObserver& observer) { observer.OnBeforeEvent(event); });
}

void CHostObservers::Tell(const SHostEvent& event)
{
    TellEach([&](IHostObserver& observer) { observer.OnEvent(event); });
}
