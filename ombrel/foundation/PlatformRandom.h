#pragma once
#include "ombrel/platform/framework/Types.h"

namespace ombrel {

/// The platform's pseudo-random sequence: 15-bit numbers of a 32-bit linear congruence.
class PlatformRandom {
public:
    explicit PlatformRandom(DWORD seed)
        : m_state(seed)
    {
    }
    int Next()
    {
        m_state = m_state * kFactor + kSummand;
        return static_cast<int>(m_state >> 16 & 0x7FFF);
    }
    /// 0 … 255.
    int NextChannel() { return static_cast<int>(Next() / 32767.0 * 255 + 0.5); }
    /// The next three channels, red first.
    COLORREF NextColour()
    {
        int const red = NextChannel();
        int const green = NextChannel();
        int const blue = NextChannel();
        return RGB(red, green, blue);
    }
    /// Leaves out so many numbers, in steps of doubled length.
    void Skip(DWORD count)
    {
        DWORD factor = kFactor;
        DWORD summand = kSummand;
        for (; count != 0; count >>= 1) {
            if ((count & 1) != 0)
                m_state = m_state * factor + summand;
            summand *= factor + 1;
            factor *= factor;
        }
    }

private:
    static constexpr DWORD kFactor = 214013;
    static constexpr DWORD kSummand = 2531011;
    DWORD m_state;
};

} // namespace ombrel
