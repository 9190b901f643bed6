#include "ombrel/table/TableReader.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <string>

namespace {

using namespace ombrel;

void AppendNumber(std::string& text, double value, int decimals)
{
    char buffer[64];
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    text.append(buffer, result.ptr);
}

/// Two columns, 17 bytes a row: a rising x and a wave.
std::string PlainNumbers(int rows)
{
    std::string text = "time,value\n";
    for (int i = 0; i < rows; ++i) {
        AppendNumber(text, i * 0.01, 2);
        text += ',';
        AppendNumber(text, std::sin(i * 1e-4), 5);
        text += '\n';
    }
    return text;
}

/// All 17 digits that a double may need, and exponents.
std::string LongNumbers(int rows)
{
    std::string text = "x y\n";
    for (int i = 0; i < rows; ++i) {
        char buffer[64];
        for (double const value : { i * 0.1, std::exp(std::sin(i * 0.01) * 40.0) }) {
            auto const result = std::to_chars(buffer, buffer + sizeof buffer, value);
            text.append(buffer, result.ptr);
            text += ' ';
        }
        text.back() = '\n';
    }
    return text;
}

std::string Dates(int rows)
{
    std::string text = "when;level\n";
    for (int i = 0; i < rows; ++i) {
        text += "2020-0" + std::to_string(1 + i / 28 % 9) + "-" + std::to_string(10 + i % 18)
            + " 12:" + std::to_string(10 + i % 50) + ";";
        AppendNumber(text, i * 0.25, 2);
        text += '\n';
    }
    return text;
}

std::string QuotedNumbers(int rows)
{
    std::string text = "\"time\",\"value\"\n";
    for (int i = 0; i < rows; ++i)
        text += "\"" + std::to_string(i) + "\",\"" + std::to_string(i % 1000) + ".5\"\n";
    return text;
}

void ReadRows(benchmark::State& state, std::string const& text)
{
    std::size_t rows = 0;
    for (auto _ : state) {
        auto const result = ReadTable(text, {});
        if (auto const* const error = std::get_if<TableError>(&result))
            state.SkipWithError(error->ToText().c_str());
        else
            rows += std::get<Table>(result).rows;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
    state.SetItemsProcessed(static_cast<std::int64_t>(rows));
}

constexpr int kRows = 500'000;
BENCHMARK_CAPTURE(ReadRows, PlainNumbers, PlainNumbers(kRows));
BENCHMARK_CAPTURE(ReadRows, LongNumbers, LongNumbers(kRows));
BENCHMARK_CAPTURE(ReadRows, Dates, Dates(kRows));
BENCHMARK_CAPTURE(ReadRows, QuotedNumbers, QuotedNumbers(kRows));

} // namespace
