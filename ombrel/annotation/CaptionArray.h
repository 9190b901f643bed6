#pragma once
#include "ombrel/annotation/AnnotationArray.h"
#include "ombrel/annotation/Caption.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The captions of a graph, in drawing order. Owns them.
class OMBREL_EXPORT CCaptionArray : public AnnotationArray<CCaption> {
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
