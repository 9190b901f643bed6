#pragma once
#include "ombrel/platform/framework/Export.h"

#include <chrono>
#include <concepts>
#include <limits>
#include <ranges>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

namespace ombrel {

/// What stands along x: numbers, dates, or words side by side, at 1, 2, 3, ...
enum class XKind { Numbers, Dates, Words };

/// A date as graphs have it: days since 30 December 1899, with the time as a fraction (before that day it counts away
/// from zero).
OMBREL_EXPORT double DateValue(std::chrono::sys_time<std::chrono::milliseconds> time);

/// Whether a type is a point in time of the system's clock, such as std::chrono::sys_days.
template <typename Type> inline constexpr bool kIsTime = false;
template <typename Duration> inline constexpr bool kIsTime<std::chrono::sys_time<Duration>> = true;

/// Whether a type is what numbers are handed over in.
template <typename Type> inline constexpr bool kIsNumber = std::is_same_v<Type, double>;

template <typename Type>
concept NumberRange = std::ranges::contiguous_range<Type> && kIsNumber<std::ranges::range_value_t<Type>>;
template <typename Type>
concept TimeRange = std::ranges::input_range<Type> && kIsTime<std::ranges::range_value_t<Type>>;
template <typename Type>
concept WordRange
    = std::ranges::input_range<Type> && std::convertible_to<std::ranges::range_value_t<Type>, std::string_view>;

/// The x values of a series, made from any contiguous range: of numbers (NaN is a gap), of points in time, or of words,
/// of which equal ones share a place and empty ones are gaps. Numbers are looked at in place, so the range must outlive
/// the call that it is handed to.
class OMBREL_EXPORT XValues {
public:
    template <NumberRange Range>
    XValues(Range const& numbers) // NOLINT(google-explicit-constructor): stands for the range
        : m_numbers(numbers)
    {
    }
    template <TimeRange Range> XValues(Range const& times) // NOLINT(google-explicit-constructor)
        : m_kind(XKind::Dates)
    {
        for (auto const& time : times)
            m_made.push_back(DateValue(std::chrono::floor<std::chrono::milliseconds>(time)));
        m_numbers = m_made;
    }
    template <WordRange Range> XValues(Range const& words) // NOLINT(google-explicit-constructor)
        : m_kind(XKind::Words)
    {
        // By word, its place from 1.
        std::unordered_map<std::string, double> places;
        for (std::string_view const word : words) {
            if (word.empty()) {
                m_made.push_back(std::numeric_limits<double>::quiet_NaN());
                continue;
            }
            auto const [place, isNew] = places.try_emplace(std::string(word), static_cast<double>(m_words.size() + 1));
            if (isNew)
                m_words.emplace_back(word);
            m_made.push_back(place->second);
        }
        m_numbers = m_made;
    }
    /// Dates as DateValue gives them, and columns of tables have them; looked at in place, too.
    static XValues Dates(std::span<double const> days)
    {
        XValues dates;
        dates.m_kind = XKind::Dates;
        dates.m_numbers = days;
        return dates;
    }
    /// 1, 2, 3, ..., count.
    static XValues Counted(std::size_t count)
    {
        XValues counted;
        counted.CountTo(count);
        return counted;
    }
    XValues(XValues const&) = delete;
    XValues& operator=(XValues const&) = delete;
    XValues(XValues&&) = default;
    XValues& operator=(XValues&&) = default;
    ~XValues() = default;

    XKind Kind() const { return m_kind; }
    std::span<double const> Numbers() const { return m_numbers; }
    /// The different ones, in the order in which they first appear.
    std::vector<std::string> const& Words() const { return m_words; }

private:
    XValues() = default;
    void CountTo(std::size_t count)
    {
        for (std::size_t i = 1; i <= count; ++i)
            m_made.push_back(static_cast<double>(i));
        m_numbers = m_made;
    }

    XKind m_kind = XKind::Numbers;
    std::vector<double> m_made;
    std::span<double const> m_numbers;
    std::vector<std::string> m_words;
};

} // namespace ombrel
