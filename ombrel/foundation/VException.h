#pragma once
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// An error in a file that the user chose, with the message to show. Thrown by pointer, newly allocated; the catcher
/// deletes it.
class OMBREL_EXPORT CVException : public CException {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CVException() = default;
    explicit CVException(CString const& text)
        : message(text)
    {
    }
    CString GetErrorMessage() const override { return message; }
    /// Of kind Data.
    Error AsError() const override;

    CString message;
};

} // namespace ombrel
