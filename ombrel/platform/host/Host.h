#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/String.h"

#include <functional>

namespace ombrel {

/// Which buttons and sign a message has.
enum MessageBoxStyle : UINT { MB_OK = 0, MB_ICONEXCLAMATION = 0x30 };

/// Shows a message to the user; returns when it was closed.
using MessageBoxFunction = std::function<void(CString const& text, CString const& title, UINT style)>;
/// Gives the text of a string resource; false when there is none of that number.
using StringResourceFunction = std::function<bool(UINT id, CString& text)>;

/// The host's own; null goes back to the built-in ones (message boxes on standard error). They may be set at any time
/// and are called by whatever thread draws or loads, by several at once when several do.
OMBREL_EXPORT void SetMessageBoxFunction(MessageBoxFunction function);
/// The texts of string resources, likewise.
OMBREL_EXPORT void SetStringResourceFunction(StringResourceFunction function);

/// Shows a message by the function that is set.
OMBREL_EXPORT void MessageBox(CString const& text, CString const& title, UINT style);

/// Takes what a call tells beside its work, a text with its line break at the end.
using OutputFunction = std::function<void(CString const& text)>;
/// As above; the built-in one writes to standard output.
OMBREL_EXPORT void SetOutputFunction(OutputFunction function);
/// Hands a text to the function that is set.
OMBREL_EXPORT void WriteOutput(CString const& text);

/// The text of a string resource: the host's, else the library's built-in text for 1003, 1005, 1006 and 1007.
/// False, and text untouched, when there is neither.
OMBREL_EXPORT bool LoadStringResource(UINT id, CString& text);

/// The pictures of the user's locale in d, dd, M, MM, yy, yyyy, H, HH, h, hh, mm, ss, tt letters, from the
/// environment the process was started in and untouched by setlocale: "MM/dd/yy" and "HH:mm:ss" in the "C" locale.
OMBREL_EXPORT CString GetLocaleShortDatePicture();
/// The picture of a time of day, likewise.
OMBREL_EXPORT CString GetLocaleTimePicture();

} // namespace ombrel
