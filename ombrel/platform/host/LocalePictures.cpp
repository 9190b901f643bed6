#include "ombrel/platform/host/LocalePictures.h"

#include <langinfo.h>
#include <locale.h>

namespace ombrel {

namespace {

/// What a strftime code is in a picture; null for codes that pictures have no letters for.
char const* PictureOf(char code, bool padded)
{
    switch (code) {
    case 'd':
        return padded ? "dd" : "d";
    case 'e':
        return "d";
    case 'm':
        return padded ? "MM" : "M";
    case 'b':
    case 'h':
        return "MMM";
    case 'B':
        return "MMMM";
    case 'a':
        return "ddd";
    case 'A':
        return "dddd";
    case 'y':
        return "yy";
    case 'Y':
    case 'G':
        return "yyyy";
    case 'H':
        return padded ? "HH" : "H";
    case 'k':
        return "H";
    case 'I':
        return padded ? "hh" : "h";
    case 'l':
        return "h";
    case 'M':
        return "mm";
    case 'S':
        return "ss";
    case 'p':
    case 'P':
        return "tt";
    case 'D':
        return "MM/dd/yy";
    case 'F':
        return "yyyy-MM-dd";
    case 'T':
        return "HH:mm:ss";
    case 'R':
        return "HH:mm";
    case 'r':
        return "hh:mm:ss tt";
    case 'n':
    case 't':
        return " ";
    case '%':
        return "%";
    default:
        return nullptr;
    }
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

class Locale {
public:
    explicit Locale(std::string const& name)
        : m_locale(newlocale(LC_TIME_MASK | LC_CTYPE_MASK, name.c_str(), locale_t()))
    {
    }
    ~Locale()
    {
        if (m_locale)
            freelocale(m_locale);
    }
    Locale(Locale const&) = delete;
    Locale& operator=(Locale const&) = delete;
    explicit operator bool() const { return m_locale != locale_t(); }
    std::string Information(nl_item item) const { return nl_langinfo_l(item, m_locale); }

private:
    locale_t m_locale;
};

bool IsAscii(std::string_view text)
{
    for (char const c : text) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    }
    return true;
}

} // namespace

CString MakePicture(std::string_view format)
{
    std::string picture;
    bool quoted = false;
    auto const setQuoted = [&](bool on) {
        if (quoted != on)
            picture += '\'';
        quoted = on;
    };
    for (std::size_t i = 0; i < format.size(); ++i) {
        char const c = format[i];
        if (c != '%') {
            if (c == '\'')
                picture += '\'';
            else
                setQuoted(IsLetter(c) || (quoted && c != ' '));
            picture += c;
            continue;
        }
        bool padded = true;
        // Flags, a width and the modifiers for other calendars and digits.
        while (++i < format.size() && std::string_view("-_0^#+123456789EO").find(format[i]) != std::string_view::npos)
            padded = padded && format[i] != '-' && format[i] != '_';
        char const* const letters = i < format.size() ? PictureOf(format[i], padded) : nullptr;
        if (!letters)
            continue;
        setQuoted(false);
        picture += letters;
    }
    setQuoted(false);
    return CString(picture).Trim();
}

LocalePictures GetLocalePictures(std::string const& localeName)
{
    Locale const locale(localeName);
    if (!locale)
        return {};
    std::string const date = locale.Information(D_FMT);
    std::string const time = locale.Information(T_FMT);
    if (locale.Information(CODESET) != "UTF-8" && !(IsAscii(date) && IsAscii(time))) {
        // The texts are in another character set: the same locale in ours has the same texts.
        std::string const base = localeName.substr(0, localeName.find_first_of(".@"));
        std::string const utf8 = base + ".UTF-8";
        return localeName == utf8 ? LocalePictures() : GetLocalePictures(utf8);
    }
    CString const datePicture = MakePicture(date);
    CString const timePicture = MakePicture(time);
    LocalePictures pictures;
    if (!datePicture.IsEmpty())
        pictures.shortDate = datePicture;
    if (!timePicture.IsEmpty())
        pictures.time = timePicture;
    return pictures;
}

} // namespace ombrel
