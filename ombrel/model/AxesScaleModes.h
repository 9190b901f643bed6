#pragma once
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// Which axes of a 2D graph are logarithmic: the model asks, the axes (CAxes) answer.
class OMBREL_EXPORT AxesScaleModes {
public:
    /// 1 for a logarithmic axis, else 0.
    virtual int GetXAxisScaleMode() const = 0;
    virtual int GetYAxisScaleMode() const = 0;

protected:
    AxesScaleModes() = default;
    AxesScaleModes(AxesScaleModes const&) = default;
    AxesScaleModes& operator=(AxesScaleModes const&) = default;
    ~AxesScaleModes() = default;
};

} // namespace ombrel
