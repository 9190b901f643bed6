#pragma once
#include "ombrel/platform/framework/Export.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace ombrel {

/// Where an error happened, as far as that is known.
struct OMBREL_EXPORT ErrorPlace {
    /// The file, in UTF-8.
    std::string path {};
    /// Bytes from the start of the archive or file.
    std::optional<std::uint64_t> offset {};
    /// The errno value behind it, 0 for none.
    int systemError = 0;
    /// Of a text file, counted from 1.
    std::optional<std::uint64_t> line {};
};

/// What went wrong in a call of the library, as an exception like any other: thrown by value, owned by nobody.
///
/// The classes throw pointers that their catcher deletes (CException*); WithErrors (Exception.h) turns these into
/// Errors. what() is
/// one line for a person, in UTF-8.
class OMBREL_EXPORT Error : public std::runtime_error {
public:
    /// What went wrong.
    enum class Kind {
        /// There is no file of that name.
        FileNotFound,
        /// A file cannot be opened, read or written.
        File,
        /// The bytes of an archive are not what should stand there, or an object has no archive form.
        Archive,
        /// An object in an archive is of a class that nobody has registered.
        UnknownClass,
        /// Values that a user chose, or that came by automation, do not fit.
        Data,
        /// An argument is not one that the call takes: an index outside, for example.
        Argument,
        /// The system could not give a bitmap or a device.
        Resource,
        /// What has no kind of its own.
        Other,
    };
    Error(Kind kind, std::string const& message, ErrorPlace place = {});

    Kind GetKind() const { return m_kind; }
    /// Empty when no file is concerned, or it is not known.
    std::string const& GetPath() const { return m_place.path; }
    std::optional<std::uint64_t> GetOffset() const { return m_place.offset; }
    int GetSystemError() const { return m_place.systemError; }
    std::optional<std::uint64_t> GetLine() const { return m_place.line; }

private:
    Kind m_kind;
    ErrorPlace m_place;
};

} // namespace ombrel
