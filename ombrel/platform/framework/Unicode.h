#pragma once
#include "ombrel/platform/framework/Export.h"
#include <cstddef>
#include <string>
#include <string_view>

/// Code points and their encodings. Nothing here throws (but for lack of memory) or depends on the process locale.
namespace ombrel::unicode {

/// What stands for text that cannot be decoded.
constexpr char32_t kReplacement = 0xFFFD;

/// The code point at position, which moves behind it; an unpaired surrogate comes out as itself.
OMBREL_EXPORT char32_t Next(std::u16string_view text, std::size_t& position);
/// Appends the code point; a surrogate or a value past U+10FFFF becomes U+FFFD.
OMBREL_EXPORT void Append(std::u16string& text, char32_t codePoint);
/// The two surrogates of a code point above U+FFFF.
OMBREL_EXPORT void ToPair(char32_t codePoint, char16_t& high, char16_t& low);

/// Appends UTF-8 text; each longest beginning of a sequence that cannot be completed becomes one U+FFFD.
OMBREL_EXPORT void AppendUtf8(std::u16string& text, std::string_view utf8);
/// Unpaired surrogates become U+FFFD.
OMBREL_EXPORT std::string ToUtf8(std::u16string_view text);

/// Simple case mappings: one code point to one, never between the Basic Multilingual Plane and the rest.
OMBREL_EXPORT char32_t ToLower(char32_t codePoint);
/// To upper case, likewise.
OMBREL_EXPORT char32_t ToUpper(char32_t codePoint);
/// Alike for code points that differ in case only.
OMBREL_EXPORT char32_t Fold(char32_t codePoint);
/// White space by the Unicode property (with the no-break spaces and the next-line control).
OMBREL_EXPORT bool IsSpace(char16_t unit);

} // namespace ombrel::unicode
