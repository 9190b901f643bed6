#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/Index.h"

#include <memory>
#include <system_error>

namespace ombrel {

constinit CRuntimeClass const CException::kClass = DynamicClass<CObject>("CException");
constinit CRuntimeClass const CResourceException::kClass = DynamicClass<CException>("CResourceException");
constinit CRuntimeClass const CInvalidArgException::kClass = DynamicClass<CException>("CInvalidArgException");
constinit CRuntimeClass const CUserException::kClass = DynamicClass<CException>("CUserException");
constinit CRuntimeClass const CFileException::kClass = DynamicClass<CException>("CFileException");
constinit CRuntimeClass const CArchiveException::kClass = DynamicClass<CException>("CArchiveException");
constinit CRuntimeClass const COleDispatchException::kClass = DynamicClass<CException>("COleDispatchException");

Error::Error(Kind kind, std::string const& message, ErrorPlace place)
    : std::runtime_error(message)
    , m_kind(kind)
    , m_place(std::move(place))
{
}

void ThrowAsError(CException* exception)
{
    std::unique_ptr<CException> const owned(exception);
    throw exception->AsError();
}

void ThrowBadIndex(int index, std::size_t size)
{
    CString message;
    message.Format("The index %d is not one of %u elements.", index, size);
    throw new CInvalidArgException(message);
}

Error CException::AsError() const { return { Error::Kind::Other, GetErrorMessage().ToUtf8() }; }

Error CResourceException::AsError() const { return { Error::Kind::Resource, GetErrorMessage().ToUtf8() }; }

Error CInvalidArgException::AsError() const { return { Error::Kind::Argument, GetErrorMessage().ToUtf8() }; }

Error CUserException::AsError() const
{
    CString text = m_told;
    text.Replace("\n", " ");
    return { Error::Kind::Data, text.ToUtf8() };
}

Error COleDispatchException::AsError() const { return { Error::Kind::Data, GetErrorMessage().ToUtf8() }; }

Error CFileException::AsError() const
{
    Error::Kind const kind = m_cause == fileNotFound ? Error::Kind::FileNotFound : Error::Kind::File;
    return { kind, GetErrorMessage().ToUtf8(), { m_strFileName.ToUtf8(), std::nullopt, m_lOsError } };
}

CString CFileException::GetErrorMessage() const
{
    CString const file = m_strFileName.IsEmpty() ? CString("The file") : m_strFileName;
    switch (m_cause) {
    case none:
        return file + " met no error.";
    case fileNotFound:
        return file + " was not found.";
    case badPath:
        return file + " is not a valid path.";
    case accessDenied:
        return file + " may not be accessed.";
    case diskFull:
        return file + " could not be written: the disk is full.";
    case endOfFile:
        return file + " ended too early.";
    case hardIO:
        return file + " could not be read or written: the device reported an error.";
    case genericException:
        break;
    }
    if (m_lOsError == 0)
        return file + " could not be read or written.";
    return file + " could not be read or written: " + CString(std::generic_category().message(m_lOsError)) + ".";
}

namespace {

char const* DescribeCause(CArchiveException::Cause cause)
{
    switch (cause) {
    case CArchiveException::none:
        return "no error";
    case CArchiveException::readOnly:
        return "the archive is open for loading only";
    case CArchiveException::endOfFile:
        return "the data end too early";
    case CArchiveException::writeOnly:
        return "the archive is open for storing only";
    case CArchiveException::badIndex:
        return "an object reference is not valid";
    case CArchiveException::badClass:
        return "the class of an object is not the right one";
    case CArchiveException::badSchema:
        return "an object has an unknown version";
    case CArchiveException::badData:
        return "a value is not valid";
    case CArchiveException::tooDeep:
        return "objects are nested too deeply";
    case CArchiveException::genericException:
        break;
    }
    return "an error";
}

} // namespace

CString CArchiveException::GetErrorMessage() const
{
    CString message;
    message.Format("Archive, byte %u: ", m_offset);
    if (!m_unknownClass.IsEmpty())
        message += CString("unknown class ") + m_unknownClass;
    else
        message += DescribeCause(m_cause);
    if (!m_expected.IsEmpty())
        message += CString("; expected ") + m_expected;
    message += u'.';
    return message;
}

Error CArchiveException::AsError() const
{
    Error::Kind const kind = m_unknownClass.IsEmpty() ? Error::Kind::Archive : Error::Kind::UnknownClass;
    return { kind, GetErrorMessage().ToUtf8(), { m_strFileName.ToUtf8(), m_offset } };
}

} // namespace ombrel
