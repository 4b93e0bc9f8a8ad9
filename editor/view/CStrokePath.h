#pragma once

#include "host/HostTypes.h"

#include <cstddef>
#include <functional>
#include <vector>

// A line from knot to knot that a stroke is to follow. Heights of knots are those of the ground
// when they were set. Owned by the hand at the views. UI thread.
class CStrokePath
{
public:
    using FnEmit = std::function<void(const SVec3& point)>;

    void Begin() // without a knot
    {
        Stop();
        m_bOn = true;
    }

    void Stop();

    bool IsOn() const { return m_bOn; }

    void Add(const SVec3& knot); // nothing on a closed path
    // Takes the last knot away, or opens a closed path again. False when there is nothing.
    bool Remove();
    // Leads back to the first knot. False with fewer than three.
    bool Close();

    bool IsClosed() const { return m_bClosed; }

    size_t GetCount() const { return m_Knots.size(); }

    bool CanApply() const { return m_Knots.size() > 1; }

    // The first one stands at the end of a closed path once more.
    std::vector<SVec3> GetKnots() const;

    // Gives the places that lie fSpacing apart along the line of knots, seen from above, from the
    // first one on, and each time the end. Their heights have no meaning.
    static void Walk(const std::vector<SVec3>& knots, float fSpacing, const FnEmit& emit);

private:
    bool m_bOn = false;
    bool m_bClosed = false;
    std::vector<SVec3> m_Knots;
};
