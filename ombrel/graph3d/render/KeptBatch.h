#pragma once
#include "ombrel/graph3d/render/FaceBatch.h"

namespace ombrel {

/// A batch, of any class that can be cleared, that is built anew only when what it follows from, its key, has changed.
template <typename Key, typename Batch = FaceBatch> class KeptBatch {
public:
    /// Build is called with an empty batch.
    template <typename Build> Batch& Get(Key const& key, Build const& build)
    {
        if (m_isBuilt && key == m_key)
            return m_batch;
        m_isBuilt = false;
        m_batch.Clear();
        build(m_batch);
        m_key = key;
        m_isBuilt = true;
        return m_batch;
    }
    void InvalidateDeviceObjects() { m_batch.InvalidateDeviceObjects(); }

private:
    Batch m_batch;
    Key m_key;
    bool m_isBuilt = false;
};

} // namespace ombrel
