#pragma once

#include <QKeyEvent>

#include <cstdint>

// The key whose being held does something until it is released. A plain value.
struct SHeldKey
{
    int iKey = 0;
    uint32_t uScanCode = 0; // 0 where the system has none

    static SHeldKey Of(const QKeyEvent& event)
    {
        return {.iKey = event.key(), .uScanCode = event.nativeScanCode()};
    }

    // By its place on the keyboard: with another modifier the same key may have another sign.
    bool IsReleasedBy(const QKeyEvent& event) const
    {
        const bool bSame =
            event.nativeScanCode() != 0 ? event.nativeScanCode() == uScanCode : event.key() == iKey;
        return bSame && !event.isAutoRepeat();
    }
};
