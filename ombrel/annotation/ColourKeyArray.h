#pragma once
#include "ombrel/annotation/AnnotationArray.h"
#include "ombrel/annotation/ColourKey.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The colour keys of a graph, in drawing order. Owns them.
class OMBREL_EXPORT CColourKeyArray : public AnnotationArray<CColourKey> {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    using AnnotationArray::AnnotationArray;

    /// −1 when the key is not here.
    int GetColourKeyIndex(CColourKey const* key) const { return GetItems().Find(key); }
    /// The tags of the curves that have a key, in the keys' order; replaces what tags holds.
    void GetCurves(CDWordArray& tags) const;
    /// Deletes every key whose curve is gone or no longer needs one. Does nothing outside a graph.
    void Refresh();
};

} // namespace ombrel
