#pragma once

#include <cstdint>

// A fixed row of pseudo-random numbers, the same on every machine and run.
class CNumbers
{
public:
    explicit CNumbers(uint32_t uSeed)
        : m_State(uSeed * 2654435761U + 1U)
    {
    }

    uint32_t Next()
    {
        m_State ^= m_State << 13U;
        m_State ^= m_State >> 17U;
        m_State ^= m_State << 5U;
        return m_State;
    }

    int Int(int iFirst, int iLast) // both included
    {
        return iFirst + static_cast<int>(Next() % static_cast<uint32_t>(iLast - iFirst + 1));
    }

    float Float(float fMin, float fMax)
    {
        return fMin + (fMax - fMin) * (static_cast<float>(Next() >> 8U) / 16777216.0F);
    }

private:
    uint32_t m_State; // never 0
};
