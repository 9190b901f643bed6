#include "ombrel/platform/framework/Number.h"
#include "ombrel/platform/framework/String.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace ombrel {

namespace {

/// Wider fields would only serve a mistaken or hostile format.
constexpr int kWidestField = 4096;

struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zeros = false;
    int width = 0;
    /// −1 when none is given.
    int precision = -1;
    char16_t letter = 0;
};

/// Walks through a format and takes the arguments in their order.
class Formatter {
public:
    Formatter(std::u16string_view format, std::span<FormatArgument const> arguments)
        : m_format(format)
        , m_arguments(arguments)
    {
    }
    std::u16string Run();

private:
    bool AtEnd() const { return m_at == m_format.size(); }
    bool Skip(char16_t unit);
    FormatArgument const* NextArgument();
    std::optional<int> Number();
    bool ParseConversion(Conversion& c);
    void Convert(Conversion const& c, FormatArgument const& argument);
    void Pad(Conversion const& c, std::u16string_view prefix, std::u16string_view body, bool zeros);
    void PadAscii(Conversion const& c, std::string const& prefix, std::string const& body, bool zeros);
    void ConvertInteger(Conversion const& c, FormatArgument const& argument);
    void ConvertReal(Conversion const& c, double value);
    void ConvertText(Conversion const& c, FormatArgument const& argument);

    std::u16string_view m_format;
    std::span<FormatArgument const> m_arguments;
    std::size_t m_at = 0;
    std::u16string m_result;
};

std::string Sign(Conversion const& c, bool negative) { return negative ? "-" : c.plus ? "+" : c.blank ? " " : ""; }

bool Formatter::Skip(char16_t unit)
{
    if (AtEnd() || m_format[m_at] != unit)
        return false;
    ++m_at;
    return true;
}

FormatArgument const* Formatter::NextArgument()
{
    if (m_arguments.empty())
        return nullptr;
    FormatArgument const* const next = &m_arguments.front();
    m_arguments = m_arguments.subspan(1);
    return next;
}

/// Digits, or '*' for the next argument; nothing when neither is there.
std::optional<int> Formatter::Number()
{
    if (Skip(u'*')) {
        FormatArgument const* const argument = NextArgument();
        long long const value = argument ? argument->AsInteger() : 0;
        return static_cast<int>(std::clamp<long long>(value, -kWidestField, kWidestField));
    }
    std::optional<int> number;
    for (; !AtEnd() && m_format[m_at] >= u'0' && m_format[m_at] <= u'9'; ++m_at)
        number = std::min(number.value_or(0) * 10 + (m_format[m_at] - u'0'), kWidestField);
    return number;
}

/// What follows a '%'; false when the format ends before its letter.
bool Formatter::ParseConversion(Conversion& c)
{
    for (bool more = true; more;) {
        if (Skip(u'-'))
            c.left = true;
        else if (Skip(u'+'))
            c.plus = true;
        else if (Skip(u' '))
            c.blank = true;
        else if (Skip(u'#'))
            c.alternate = true;
        else if (Skip(u'0'))
            c.zeros = true;
        else
            more = false;
    }
    c.width = Number().value_or(0);
    if (c.width < 0) {
        c.left = true;
        c.width = -c.width;
    }
    if (Skip(u'.'))
        c.precision = std::max(Number().value_or(0), -1);
    // Length modifiers say nothing here: arguments know their own kind.
    if (m_format.substr(m_at).starts_with(u"I64") || m_format.substr(m_at).starts_with(u"I32"))
        m_at += 3;
    while (!AtEnd() && std::u16string_view(u"hlLqjztw").find(m_format[m_at]) != std::u16string_view::npos)
        ++m_at;
    if (AtEnd())
        return false;
    c.letter = m_format[m_at++];
    return true;
}

void Formatter::Pad(Conversion const& c, std::u16string_view prefix, std::u16string_view body, bool zeros)
{
    std::size_t const length = prefix.size() + body.size();
    std::size_t const padding = static_cast<std::size_t>(c.width) - std::min(length, static_cast<std::size_t>(c.width));
    if (!c.left && !zeros)
        m_result.append(padding, u' ');
    m_result.append(prefix);
    if (!c.left && zeros)
        m_result.append(padding, u'0');
    m_result.append(body);
    if (c.left)
        m_result.append(padding, u' ');
}

void Formatter::PadAscii(Conversion const& c, std::string const& prefix, std::string const& body, bool zeros)
{
    Pad(c, std::u16string(prefix.begin(), prefix.end()), std::u16string(body.begin(), body.end()), zeros);
}

void Formatter::ConvertInteger(Conversion const& c, FormatArgument const& argument)
{
    bool const isSigned = c.letter == u'd' || c.letter == u'i';
    bool const negative = isSigned && argument.AsInteger() < 0;
    unsigned long long magnitude = argument.AsUnsigned();
    if (isSigned) {
        magnitude = static_cast<unsigned long long>(argument.AsInteger());
        magnitude = negative ? 0 - magnitude : magnitude;
    }
    bool const hexadecimal = c.letter == u'x' || c.letter == u'X';
    char digits[24];
    auto const end = std::to_chars(digits, digits + sizeof digits, magnitude, hexadecimal ? 16 : 10).ptr;
    std::string body(digits, end);
    if (c.precision == 0 && magnitude == 0)
        body.clear();
    if (c.precision > 0 && body.size() < static_cast<std::size_t>(c.precision))
        body.insert(0, static_cast<std::size_t>(c.precision) - body.size(), '0');
    std::string prefix = isSigned ? Sign(c, negative) : "";
    if (hexadecimal && c.alternate && magnitude != 0)
        prefix = "0x";
    if (c.letter == u'X') {
        auto const upper = [](char x) { return x >= 'a' && x <= 'z' ? static_cast<char>(x - 32) : x; };
        std::transform(body.begin(), body.end(), body.begin(), upper);
        std::transform(prefix.begin(), prefix.end(), prefix.begin(), upper);
    }
    PadAscii(c, prefix, body, c.zeros && c.precision < 0);
}

/// The number with the point that '#' asks for, and with the trailing zeros that 'g' drops otherwise.
std::string FormatAlternate(double magnitude, char notation, int precision)
{
    std::string text;
    if (notation == 'g') {
        int const digits = std::max(precision, 1);
        text = FormatNumber(magnitude, 'e', digits - 1);
        int const exponent = ScanInteger(std::string_view(text).substr(text.find('e') + 1)).value_or(0);
        if (exponent >= -4 && exponent < digits)
            text = FormatNumber(magnitude, 'f', digits - 1 - exponent);
    } else {
        text = FormatNumber(magnitude, notation, precision);
    }
    if (text.find('.') == std::string::npos)
        text.insert(std::min(text.find('e'), text.size()), 1, '.');
    return text;
}

void Formatter::ConvertReal(Conversion const& c, double value)
{
    bool const upper = c.letter < u'a';
    char const notation = static_cast<char>(upper ? c.letter + 32 : c.letter);
    int const precision = c.precision < 0 ? 6 : c.precision;
    bool const negative = std::signbit(value) && !std::isnan(value);
    double const magnitude = std::fabs(value);
    bool const alternate = c.alternate && std::isfinite(value);
    std::string body
        = alternate ? FormatAlternate(magnitude, notation, precision) : FormatNumber(magnitude, notation, precision);
    if (upper) {
        for (char& x : body) {
            if (x >= 'a' && x <= 'z')
                x = static_cast<char>(x - 32);
        }
    }
    PadAscii(c, Sign(c, negative), body, c.zeros && std::isfinite(value));
}

void Formatter::ConvertText(Conversion const& c, FormatArgument const& argument)
{
    CString const text = argument.ConvertedToText();
    std::size_t const most = c.precision < 0 ? text.View().size() : static_cast<std::size_t>(c.precision);
    Pad(c, {}, text.View().substr(0, most), false);
}

void Formatter::Convert(Conversion const& c, FormatArgument const& argument)
{
    switch (c.letter) {
    case u'd':
    case u'i':
    case u'u':
    case u'x':
    case u'X':
        ConvertInteger(c, argument);
        break;
    case u'e':
    case u'E':
    case u'f':
    case u'F':
    case u'g':
    case u'G':
        ConvertReal(c, argument.AsReal());
        break;
    case u'c':
        if (argument.GetKind() == FormatArgument::Kind::Text) {
            Pad(c, {}, argument.AsText().View().substr(0, 1), false);
        } else {
            char16_t const unit = static_cast<char16_t>(argument.AsInteger());
            Pad(c, {}, { &unit, 1 }, false);
        }
        break;
    default:
        ConvertText(c, argument);
        break;
    }
}

std::u16string Formatter::Run()
{
    while (!AtEnd()) {
        std::size_t const percent = std::min(m_format.find(u'%', m_at), m_format.size());
        m_result.append(m_format.substr(m_at, percent - m_at));
        m_at = percent;
        if (!Skip(u'%'))
            break;
        if (Skip(u'%')) {
            m_result += u'%';
            continue;
        }
        Conversion c;
        if (!ParseConversion(c)) {
            m_result.append(m_format.substr(percent));
        } else if (std::u16string_view(u"diuxXeEfFgGcsS").find(c.letter) == std::u16string_view::npos) {
            // Not a conversion: it stands as it was written.
            m_result.append(m_format.substr(percent, m_at - percent));
        } else if (FormatArgument const* const argument = NextArgument()) {
            Convert(c, *argument);
        }
    }
    return std::move(m_result);
}

} // namespace

long long FormatArgument::AsInteger() const
{
    if (m_kind == Kind::Text)
        return _wtoi(m_text);
    if (m_kind == Kind::Integer)
        return m_integer;
    // 2^63 is the first double beyond long long; a conversion of anything outside would be undefined.
    constexpr double kLimit = 9223372036854775808.0;
    if (std::isnan(m_real))
        return 0;
    if (m_real >= kLimit)
        return std::numeric_limits<long long>::max();
    return m_real < -kLimit ? std::numeric_limits<long long>::min() : static_cast<long long>(m_real);
}

unsigned long long FormatArgument::AsUnsigned() const
{
    long long const value = AsInteger();
    bool const isInt = !m_long && value >= std::numeric_limits<int>::min() && value < 0;
    return isInt ? static_cast<unsigned>(value) : static_cast<unsigned long long>(value);
}

double FormatArgument::AsReal() const
{
    if (m_kind == Kind::Text)
        return ScanNumber(m_text.ToUtf8()).value_or(0.0);
    return m_kind == Kind::Real ? m_real : static_cast<double>(m_integer);
}

CString FormatArgument::ConvertedToText() const
{
    if (m_kind == Kind::Text)
        return m_text;
    return m_kind == Kind::Real ? FormatNumber(m_real, 'g', 6) : std::to_string(m_integer);
}

void CString::FormatV(CString const& format, std::span<FormatArgument const> args)
{
    // Into a result of its own: the format or an argument may be this string.
    Assign(Formatter(format.View(), args).Run());
}

} // namespace ombrel
