#pragma once
#include "ombrel/colour/AnnotationArray.h"
#include "ombrel/colour/Caption.h"

namespace ombrel {

/// The captions of a graph, in drawing order. Owns them.
class CCaptionArray : public AnnotationArray<CCaption> {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    using AnnotationArray::AnnotationArray;

    /// Forwarded to every caption.
    void UpdateGraphParameters() override;
    /// −1 when the caption is not here.
    int GetCaptionIndex(CCaption const* caption) const { return GetItems().Find(caption); }
};

} // namespace ombrel
