#pragma once
#include "ombrel/graph3d/render/FaceBatch.h"

namespace ombrel {

/// A batch that is built anew only when what it follows from, its key, has changed.
template <typename Key> class KeptBatch {
public:
    /// Build is called with an empty batch.
    template <typename Build> FaceBatch& Get(Key const& key, Build const& build)
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
    FaceBatch m_batch;
    Key m_key;
    bool m_isBuilt = false;
};

} // namespace ombrel
