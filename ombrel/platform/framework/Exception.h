#pragma once
#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"

#include <cstdint>
#include <utility>

namespace ombrel {

/// Base of the framework's exceptions. They are thrown by pointer, newly allocated; the catcher deletes them, or lets
/// WithErrors turn them into an Error.
class OMBREL_EXPORT CException : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// One line for a person.
    virtual CString GetErrorMessage() const { return {}; }
    /// The same as a value: of kind Other with the message here.
    virtual Error AsError() const;
    void Delete() { delete this; }
};

/// The platform could not give a resource: a bitmap, a device context.
class OMBREL_EXPORT CResourceException : public CException {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CString GetErrorMessage() const override { return "A required resource was unavailable."; }
    Error AsError() const override;
};

/// An argument that a call does not take: an index outside an array, for example.
class OMBREL_EXPORT CInvalidArgException : public CException {
public:
    explicit CInvalidArgException(CString const& message)
        : m_message(message)
    {
    }
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CString GetErrorMessage() const override { return m_message; }
    Error AsError() const override;

private:
    CString m_message;
};

/// What was asked for was not done, and the user has been told why: whoever catches it says nothing more.
class OMBREL_EXPORT CUserException : public CException {
public:
    /// told: what the user has read.
    explicit CUserException(CString const& told)
        : m_told(told)
    {
    }
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CString GetErrorMessage() const override { return m_told; }
    /// Of kind Data.
    Error AsError() const override;

private:
    CString m_told;
};

/// What opening, reading, writing or closing a file throws.
class OMBREL_EXPORT CFileException : public CException {
public:
    /// What the system said.
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
    Error AsError() const override;
    Cause m_cause;
    /// The errno value, 0 when there is none.
    int m_lOsError;
    CString m_strFileName;
};

/// What an archive throws: what is stored is no such object, ends too early or is of a newer kind.
class OMBREL_EXPORT CArchiveException : public CException {
public:
    /// What was wrong; GetErrorMessage tells it in words.
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
    Error AsError() const override;
    Cause m_cause;
    std::uint64_t m_offset;
    CString m_expected;
    /// The archive's file; empty for one in memory.
    CString m_strFileName;
    /// With badClass: the class in the archive when nobody has registered it, else empty.
    CString m_unknownClass;
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
    Error AsError() const override;
    CString m_strDescription;
};

/// Throws what the exception stands for (CException::AsError), and deletes it.
[[noreturn]] OMBREL_EXPORT void ThrowAsError(CException* exception);

/// Does the work and gives back its result; a CException* that leaves it comes out as an Error:
/// `WithErrors([&] { archive.WriteObject(&graph); });`
template <typename Work> decltype(auto) WithErrors(Work&& work)
{
    try {
        return std::forward<Work>(work)();
    } catch (CException* exception) {
        ThrowAsError(exception);
    }
}

/// Whether the work ends without a CException, for places where nobody asks which.
template <typename Work> bool Succeeds(Work&& work)
{
    try {
        WithErrors(std::forward<Work>(work));
        return true;
    } catch (Error const&) {
        return false;
    }
}

} // namespace ombrel
