#include "tools/ombrel/gallery/Data.h"

namespace ombrel::host {

double FixedRandom::Uniform()
{
    // Marsaglia's xorshift: enough for a picture.
    m_state ^= m_state << 13;
    m_state ^= m_state >> 7;
    m_state ^= m_state << 17;
    return static_cast<double>(m_state >> 11) * 0x1p-53;
}

double FixedRandom::Normal()
{
    double sum = -6.0;
    for (int i = 0; i < 12; ++i)
        sum += Uniform();
    return sum;
}

} // namespace ombrel::host
