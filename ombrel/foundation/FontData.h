#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

namespace ombrel {

/// A choice of font, without its height: that is each component's own and only multiplied by sizeFactor.
///
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CFontData : public CObject {
public:
    static constexpr int kNormalWeight = 400;
    static constexpr int kBoldWeight = 700;
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CFontData() = default;
    CFontData(CString const& face, int fontWeight, int isItalic, double factor)
        : faceName(face)
        , weight(fontWeight)
        , italic(isItalic)
        , sizeFactor(factor)
    {
    }
    /// The choice as a person reads it: "Arial Bold Italic". Only a weight of exactly 700 is called bold.
    CString BuildString() const;
    friend bool operator==(CFontData const& a, CFontData const& b)
    {
        return a.faceName == b.faceName && a.weight == b.weight && a.italic == b.italic && a.sizeFactor == b.sizeFactor;
    }
    void Serialize(CArchive& ar) override;

    CString faceName = "Arial";
    int weight = kNormalWeight;
    /// Not zero for italic.
    int italic = 0;
    /// Multiplies the nominal font height when the font is made.
    double sizeFactor = 1.0;
};

} // namespace ombrel
