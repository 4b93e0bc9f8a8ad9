#pragma once

#include "host/HostTypes.h"

// What a person measures on the ground: a line from one place to another, and a place that is
// looked at again and again. Heights are the ground's, asked when they are shown. UI thread.
class CGroundRuler
{
public:
    // Whether the left button draws the line.
    bool IsOn() const { return m_bOn; }

    void SetOn(bool bOn) { m_bOn = bOn; }

    void Begin(const SVec3& at)
    {
        m_From = m_To = at;
        m_bLine = true;
    }

    void MoveTo(const SVec3& at) { m_To = at; }

    bool HasLine() const { return m_bLine; }

    const SVec3& GetFrom() const { return m_From; }

    const SVec3& GetTo() const { return m_To; }

    void DropLine() { m_bLine = false; }

    bool HasProbe() const { return m_bProbe; }

    const SVec3& GetProbe() const { return m_Probe; }

    void SetProbe(const SVec3& at)
    {
        m_Probe = at;
        m_bProbe = true;
    }

    void DropProbe() { m_bProbe = false; }

    void Clear() // another level
    {
        m_bOn = m_bLine = m_bProbe = false;
    }

private:
    bool m_bOn = false;
    bool m_bLine = false;
    bool m_bProbe = false;
    SVec3 m_From;
    SVec3 m_To;
    SVec3 m_Probe;
};
