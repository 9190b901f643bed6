#include "ombrel/platform/host/Host.h"

#include "ombrel/platform/host/LocalePictures.h"

#include <cstdio>
#include <cstdlib>

namespace ombrel {

namespace {

MessageBoxFunction& TheMessageBox()
{
    static MessageBoxFunction function;
    return function;
}

StringResourceFunction& TheStringResources()
{
    static StringResourceFunction function;
    return function;
}

/// The texts without which settings could not be kept; null for other numbers.
char const* BuiltInText(UINT id)
{
    switch (id) {
    case 1003:
        return "Ombrel";
    case 1005:
        return "Software\\Ombrel\\Graphs";
    case 1006:
        return "Software\\Ombrel\\Graphs\\2D";
    case 1007:
        return "Software\\Ombrel\\Graphs\\3D";
    default:
        return nullptr;
    }
}

/// The environment is looked at once: what the process was started in.
LocalePictures const& UserPictures()
{
    static LocalePictures const pictures = [] {
        for (char const* const variable : { "LC_ALL", "LC_TIME", "LANG" }) {
            char const* const name = std::getenv(variable);
            if (name && name[0] != '\0')
                return GetLocalePictures(name);
        }
        return LocalePictures();
    }();
    return pictures;
}

} // namespace

void SetMessageBoxFunction(MessageBoxFunction function) { TheMessageBox() = std::move(function); }

void SetStringResourceFunction(StringResourceFunction function) { TheStringResources() = std::move(function); }

void MessageBox(CString const& text, CString const& title, UINT style)
{
    // A copy: the function may install another one.
    if (MessageBoxFunction const function = TheMessageBox())
        function(text, title, style);
    else
        std::fprintf(stderr, "%s: %s\n", title.ToUtf8().c_str(), text.ToUtf8().c_str());
}

bool LoadStringResource(UINT id, CString& text)
{
    CString found;
    StringResourceFunction const function = TheStringResources();
    if (function && function(id, found)) {
        text = found;
        return true;
    }
    char const* const builtIn = BuiltInText(id);
    if (!builtIn)
        return false;
    text = builtIn;
    return true;
}

CString GetLocaleShortDatePicture() { return UserPictures().shortDate; }

CString GetLocaleTimePicture() { return UserPictures().time; }

} // namespace ombrel
