#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

// Numbers and plain records in one piece of memory, for what grows with the terrain: it says when
// there is no memory, where std::vector throws. Emptying it keeps the memory.
template <typename T> class CPlainArray
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    // Room for nCount values altogether; what is there stays. False, and all is as it was, when
    // there is no memory.
    bool Reserve(size_t nCount)
    {
        if (nCount <= m_Capacity)
        {
            return true;
        }
        std::unique_ptr<T[]> pValues(new (std::nothrow) T[nCount]);
        if (pValues == nullptr)
        {
            return false;
        }
        std::copy_n(m_Values.get(), m_Count, pValues.get());
        m_Values = std::move(pValues);
        m_Capacity = nCount;
        return true;
    }

    // Values beyond the ones before are not set. False as for Reserve.
    bool Resize(size_t nCount)
    {
        const bool bRoom = Reserve(nCount);
        m_Count = bRoom ? nCount : m_Count;
        return bRoom;
    }

    // Only where Reserve has made room.
    void Append(const T& value) { m_Values[m_Count++] = value; }

    void Clear() { m_Count = 0; }

    size_t GetCount() const { return m_Count; }

    size_t GetCapacity() const { return m_Capacity; }

    bool IsEmpty() const { return m_Count == 0; }

    T* Get() { return m_Values.get(); }

    const T* Get() const { return m_Values.get(); }

    T* begin() { return m_Values.get(); }

    T* end() { return m_Values.get() + m_Count; }

    const T* begin() const { return m_Values.get(); }

    const T* end() const { return m_Values.get() + m_Count; }

private:
    std::unique_ptr<T[]> m_Values;
    size_t m_Capacity = 0;
    size_t m_Count = 0;
};
