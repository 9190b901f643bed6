#include "ombrel/table/Utf8.h"

#include <cstddef>

namespace ombrel {

namespace {

unsigned Byte(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

/// Length of the valid sequence at i, or 0.
std::size_t SequenceLength(std::string_view text, std::size_t i)
{
    unsigned const lead = Byte(text, i);
    if (lead < 0x80)
        return 1;
    std::size_t const length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || i + length > text.size())
        return 0;
    for (std::size_t k = 1; k < length; ++k) {
        if ((Byte(text, i + k) & 0xC0) != 0x80)
            return 0;
    }
    // Longer forms than needed, surrogates, and what lies beyond the last character.
    unsigned const second = Byte(text, i + 1);
    bool const bad = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F)
        || (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return bad ? 0 : length;
}

} // namespace

bool IsUtf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const length = SequenceLength(text, i);
        if (length == 0)
            return false;
        i += length;
    }
    return true;
}

std::string Utf8FromLatin1(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned const c = Byte(text, i);
        if (c < 0x80) {
            result += static_cast<char>(c);
        } else {
            result += static_cast<char>(0xC0 | c >> 6);
            result += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return result;
}

std::string QuoteForMessage(std::string_view text)
{
    constexpr std::size_t kLongest = 40;
    constexpr char kHex[] = "0123456789abcdef";
    std::string result = "\"";
    for (std::size_t i = 0; i < text.size();) {
        if (result.size() > kLongest)
            return result + "…\"";
        unsigned const c = Byte(text, i);
        std::size_t const length = SequenceLength(text, i);
        if (length == 0 || c < 0x20 || c == 0x7F) {
            result += "\\x";
            result += kHex[c >> 4];
            result += kHex[c & 15];
            ++i;
        } else {
            result += text.substr(i, length);
            i += length;
        }
    }
    return result + '"';
}

} // namespace ombrel
