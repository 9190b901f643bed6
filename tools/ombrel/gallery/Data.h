#pragma once
#include <array>
#include <cstdint>

namespace ombrel::host {

// Small tables that the gallery draws, and where they come from.

inline constexpr char const* kWeatherSource = "Source: NOAA, daily figures of Seattle-Tacoma, 2012 to 2015";
inline constexpr char const* kCarbonSource = "Source: Scripps Institution of Oceanography and NOAA, Mauna Loa";

/// Weather at Seattle-Tacoma, 2012 to 2015, by month from January on (from daily figures of NOAA, public domain).
/// Temperatures in degrees Celsius.
inline constexpr std::array<double, 12> kMeanHighs { 8.2, 9.9, 12.4, 15.0, 19.3, 22.4, 26.0, 26.1, 21.9, 16.4, 11.0,
    8.2 };
inline constexpr std::array<double, 12> kMeanLows { 2.7, 4.1, 4.9, 6.4, 9.6, 12.2, 14.2, 14.8, 12.4, 9.4, 4.7, 3.3 };
/// The highest and lowest of the four years.
inline constexpr std::array<double, 12> kRecordHighs { 17.2, 16.7, 20.6, 27.8, 30.6, 33.9, 35.0, 35.6, 33.9, 25.6, 17.8,
    18.9 };
inline constexpr std::array<double, 12> kRecordLows { -4.4, -6.0, -1.7, 1.7, 3.3, 6.1, 9.4, 10.0, 7.2, 3.3, -4.9,
    -7.1 };
/// Standard deviation of the daily highs.
inline constexpr std::array<double, 12> kHighDeviations { 3.3, 3.3, 3.3, 3.6, 4.3, 4.4, 4.2, 3.7, 4.0, 3.5, 2.9, 3.3 };
inline constexpr std::array<char const*, 12> kMonths { "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep",
    "Oct", "Nov", "Dec" };
/// Millimetres of precipitation in an average month, and in the months of each year.
inline constexpr std::array<double, 12> kMeanPrecipitation { 117, 106, 152, 94, 52, 33, 12, 41, 59, 126, 161, 156 };
inline constexpr int kFirstYear = 2012;
inline constexpr std::array<std::array<double, 12>, 4> kPrecipitation { {
    { 173, 92, 183, 68, 52, 75, 26, 0, 1, 170, 210, 174 },
    { 106, 40, 70, 150, 60, 33, 0, 34, 157, 39, 96, 42 },
    { 94, 155, 240, 106, 80, 19, 20, 46, 57, 172, 123, 122 },
    { 93, 134, 113, 52, 15, 6, 2, 83, 21, 122, 213, 285 },
} };
/// Days of each kind of weather in the four years.
struct WeatherKind {
    char const* name;
    std::array<double, 12> days;
};
inline constexpr std::array<WeatherKind, 5> kWeatherKinds { {
    { "sun", { 28, 27, 36, 52, 78, 75, 90, 86, 65, 39, 32, 32 } },
    { "fog", { 17, 3, 6, 3, 5, 1, 10, 6, 14, 19, 9, 8 } },
    { "drizzle", { 10, 4, 3, 3, 1, 2, 8, 8, 5, 4, 3, 2 } },
    { "rain", { 61, 75, 73, 61, 40, 42, 16, 24, 36, 62, 75, 76 } },
    { "snow", { 8, 4, 6, 1, 0, 0, 0, 0, 0, 0, 1, 6 } },
} };
/// Highest and lowest temperature of each day of July 2014.
inline constexpr std::array<double, 31> kJulyHighs { 34.4, 27.2, 21.7, 23.9, 24.4, 28.9, 27.2, 30.0, 26.7, 28.9, 31.1,
    32.2, 29.4, 27.8, 31.1, 31.1, 26.7, 23.9, 25.6, 19.4, 23.9, 21.1, 18.9, 20.6, 22.8, 26.1, 28.3, 30.6, 30.0, 29.4,
    30.6 };
inline constexpr std::array<double, 31> kJulyLows { 15.6, 14.4, 13.9, 13.9, 13.3, 15.0, 17.8, 15.6, 13.9, 12.8, 15.0,
    16.7, 15.0, 15.0, 13.9, 14.4, 13.9, 11.7, 15.0, 14.4, 13.3, 13.3, 13.3, 12.8, 12.2, 13.3, 15.0, 15.0, 15.6, 14.4,
    17.8 };

/// Carbon dioxide at Mauna Loa in parts per million: seasonally adjusted means of the years 1959 to 2019, and how far
/// each month lies above what is adjusted for the season (Scripps Institution of Oceanography and NOAA).
inline constexpr int kFirstCarbonYear = 1959;
inline constexpr std::array<double, 61> kCarbonDioxide { 315.98, 316.91, 317.64, 318.45, 318.99, 319.68, 320.03, 321.36,
    322.18, 323.05, 324.62, 325.68, 326.31, 327.45, 329.67, 330.24, 331.15, 332.15, 333.90, 335.50, 336.85, 338.68,
    339.93, 341.13, 342.77, 344.42, 345.90, 347.15, 348.93, 351.48, 352.90, 354.18, 355.58, 356.37, 357.04, 358.88,
    360.87, 362.64, 363.76, 366.62, 368.31, 369.47, 371.01, 373.09, 375.63, 377.36, 379.60, 381.80, 383.59, 385.45,
    387.35, 389.89, 391.64, 393.87, 396.56, 398.61, 400.88, 404.27, 406.58, 408.58, 411.49 };
inline constexpr std::array<double, 12> kCarbonCycle { 0.05, 0.69, 1.41, 2.56, 3.10, 2.34, 0.74, -1.40, -3.20, -3.31,
    -2.07, -0.85 };

/// Numbers that look random and are the same everywhere.
class FixedRandom {
public:
    explicit FixedRandom(std::uint64_t seed)
        : m_state(seed)
    {
    }
    /// Evenly spread over 0 … 1: Marsaglia's xorshift (2003), which is enough for a picture.
    double Uniform()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return static_cast<double>(m_state >> 11) * 0x1p-53;
    }
    /// Mean 0, deviation 1: the sum of twelve even ones, which needs no function that machines round differently.
    double Normal()
    {
        double sum = -6.0;
        for (int i = 0; i < 12; ++i)
            sum += Uniform();
        return sum;
    }

private:
    std::uint64_t m_state;
};

} // namespace ombrel::host
