#include "ombrel/platform/host/Host.h"

#include "ombrel/platform/host/LocalePictures.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace ombrel {

namespace {

/// A function of the host's. It is called from a copy and without the lock: it may take its time, and install another.
template <typename Function> class Installed {
public:
    Function Get() const
    {
        std::lock_guard const lock(m_mutex);
        return m_function;
    }
    /// The function that was there before ends without the lock, too.
    void Set(Function function)
    {
        std::lock_guard const lock(m_mutex);
        std::swap(m_function, function);
    }

private:
    mutable std::mutex m_mutex;
    Function m_function;
};

Installed<MessageBoxFunction>& TheMessageBox()
{
    static Installed<MessageBoxFunction> function;
    return function;
}

Installed<StringResourceFunction>& TheStringResources()
{
    static Installed<StringResourceFunction> function;
    return function;
}

Installed<OutputFunction>& TheOutput()
{
    static Installed<OutputFunction> function;
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

void SetMessageBoxFunction(MessageBoxFunction function) { TheMessageBox().Set(std::move(function)); }

void SetStringResourceFunction(StringResourceFunction function) { TheStringResources().Set(std::move(function)); }

void MessageBox(CString const& text, CString const& title, UINT style)
{
    if (auto const function = TheMessageBox().Get())
        function(text, title, style);
    else
        std::fprintf(stderr, "%s: %s\n", title.ToUtf8().c_str(), text.ToUtf8().c_str());
}

void SetOutputFunction(OutputFunction function) { TheOutput().Set(std::move(function)); }

void WriteOutput(CString const& text)
{
    if (auto const function = TheOutput().Get())
        function(text);
    else
        std::fputs(text.ToUtf8().c_str(), stdout);
}

bool LoadStringResource(UINT id, CString& text)
{
    CString found;
    auto const function = TheStringResources().Get();
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
