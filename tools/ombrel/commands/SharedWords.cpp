#include "tools/ombrel/commands/SharedWords.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/commands/PlotSource.h"

#include <algorithm>

namespace ombrel::host {

std::vector<std::string> WordsAlongX(std::vector<PlotSource> const& sources)
{
    PlotSource const& first = sources.front();
    auto const wordsOf = [](PlotSource const& source) -> std::vector<std::string> const& {
        static std::vector<std::string> const none;
        return source.HasWords() ? source.table.columns[source.xColumn].texts : none;
    };
    std::vector<std::string> const& words = wordsOf(first);
    for (PlotSource const& source : sources) {
        if (source.HasWords() != first.HasWords())
            throw Failure(kDataFault,
                source.name + ": expected " + (first.HasWords() ? "words" : "numbers or dates") + " along x as in "
                    + first.name + ", found " + (source.HasWords() ? "words" : "others"));
        std::vector<std::string> const& others = wordsOf(source);
        for (std::size_t i = 0; i < std::min(words.size(), others.size()); ++i) {
            if (words[i] != others[i])
                throw Failure(kDataFault,
                    source.PlaceOf(i) + "expected the words along x of " + first.name + ", here "
                        + QuoteForMessage(words[i]) + ", found " + QuoteForMessage(others[i]));
        }
        if (words.size() != others.size())
            throw Failure(kDataFault,
                source.name + ": expected the " + std::to_string(words.size()) + " words along x of " + first.name
                    + ", found " + std::to_string(others.size()));
    }
    return words;
}

} // namespace ombrel::host
