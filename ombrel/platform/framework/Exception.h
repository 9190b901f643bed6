#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <cstdint>

namespace ombrel {

/// Base of the framework's exceptions. They are thrown by pointer, newly allocated; the catcher deletes them.
class OMBREL_EXPORT CException : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// One line for a person.
    virtual CString GetErrorMessage() const { return {}; }
    void Delete() { delete this; }
};

/// The platform could not give a resource: a bitmap, a device context.
class OMBREL_EXPORT CResourceException : public CException {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CString GetErrorMessage() const override { return "A required resource was unavailable."; }
};

class OMBREL_EXPORT CFileException : public CException {
public:
    enum Cause { none, genericException, fileNotFound, badPath, accessDenied, diskFull, endOfFile, hardIO };
    CFileException(Cause cause, CString const& path, int osError = 0)
        : m_cause(cause)
        , m_lOsError(osError)
        , m_strFileName(path)
    {
    }
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CString GetErrorMessage() const override;
    Cause m_cause;
    /// The errno value, 0 when there is none.
    int m_lOsError;
    CString m_strFileName;
};

class OMBREL_EXPORT CArchiveException : public CException {
public:
    enum Cause {
        none,
        genericException,
        readOnly,
        endOfFile,
        writeOnly,
        badIndex,
        badClass,
        badSchema,
        badData,
        tooDeep
    };
    /// offset: bytes from the archive's start at which loading failed. expected: what should have stood there.
    CArchiveException(Cause cause, std::uint64_t offset, CString const& expected)
        : m_cause(cause)
        , m_offset(offset)
        , m_expected(expected)
    {
    }
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CString GetErrorMessage() const override;
    Cause m_cause;
    std::uint64_t m_offset;
    CString m_expected;
};

/// An argument passed through OLE automation does not fit; carries the fixed text.
class OMBREL_EXPORT COleDispatchException : public CException {
public:
    explicit COleDispatchException(CString const& description)
        : m_strDescription(description)
    {
    }
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CString GetErrorMessage() const override { return m_strDescription; }
    CString m_strDescription;
};

} // namespace ombrel
