#pragma once

#include <vector>

class IHostObserver;
struct SHostEvent;

// Those who are told of what happens on a host, in the order in which they were added. Owned by
// CEditorHost. UI thread.
class CHostObservers
{
public:
    void Add(IHostObserver* pObserver); // borrowed until Remove
    void Remove(IHostObserver* pObserver);

    // The plug-ins are about to see the event.
    void TellBefore(const SHostEvent& event);
    // It has happened. One that has no memory left to follow is told so instead, and the others
    // hear of the event all the same.
    void Tell(const SHostEvent& event);

private:
    template <typename TTell> void TellEach(TTell tell);

    std::vector<IHostObserver*> m_Observers;
};
