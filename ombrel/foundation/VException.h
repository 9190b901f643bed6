#pragma once
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/Export.h"

#include <cstdint>
#include <utility>

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

/// Where a data file is not what it should be, as far as that is known, and what should have stood there.
struct DataFileFault {
    CString path {};
    /// Counted from 1; 0 for files without lines.
    std::uint64_t line = 0;
    /// Bytes from the start of the file to the line or record.
    std::uint64_t offset = 0;
    /// To follow "expected" and "found"; either may be empty.
    CString expected {};
    CString found {};
};

/// A CVException that also knows the place. The message stays the short fixed text; what AsError gives says all.
class OMBREL_EXPORT CVFileException : public CVException {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CVFileException(CString const& text, DataFileFault place)
        : CVException(text)
        , fault(std::move(place))
    {
    }
    /// Of kind Data, with path, line and offset: "grid.tvl, line 7: the message; expected this, found that."
    Error AsError() const override;

    DataFileFault fault;
};

} // namespace ombrel
