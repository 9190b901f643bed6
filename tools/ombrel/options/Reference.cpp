#include "tools/ombrel/options/Reference.h"
#include "tools/ombrel/options/Options.h"

namespace ombrel::host {

namespace {

std::string ShortOption(OptionEntry const& option)
{
    return option.shortName ? std::string("-") + option.shortName : std::string();
}

/// "-o --output": each spelling once.
std::string Spellings(OptionEntry const& option, char const* separator)
{
    std::string const shortName = ShortOption(option);
    std::string const longName = NameOf(option);
    return shortName.empty() || shortName == longName ? longName : shortName + separator + longName;
}

std::string Join(std::span<std::string_view const> words)
{
    std::string text;
    for (std::string_view const word : words)
        text += (text.empty() ? "" : " ") + std::string(word);
    return text;
}

std::string CommandNames()
{
    std::string names;
    for (CommandEntry const& command : AllCommands())
        names += (names.empty() ? "" : " ") + std::string(command.name);
    return names;
}

std::string Replaced(std::string_view text, char what, std::string_view with)
{
    std::string result;
    for (char const c : text) {
        if (c == what)
            result += with;
        else
            result += c;
    }
    return result;
}

/// Text for the man macros: no dash may become a hyphen, and a line that starts with a point or a quote is no request.
std::string Roff(std::string_view text)
{
    std::string const escaped = Replaced(Replaced(text, '\\', "\\e"), '-', "\\-");
    bool const isRequest = !escaped.empty() && (escaped[0] == '.' || escaped[0] == '\'');
    return isRequest ? "\\&" + escaped : escaped;
}

/// The commands that take the option; empty when all do.
std::string TakenBy(OptionEntry const& option)
{
    std::string names;
    bool all = true;
    for (CommandEntry const& command : AllCommands()) {
        bool const takes = TakesOption(command.command, option);
        all = all && takes;
        if (takes)
            names += (names.empty() ? "" : ", ") + std::string(command.name);
    }
    return all ? std::string() : names;
}

/// Inside single quotes of a POSIX shell.
std::string Quoted(std::string_view text) { return "'" + Replaced(text, '\'', "'\\''") + "'"; }

/// The first sentence: a completion shows one line.
std::string_view FirstSentence(std::string_view help)
{
    std::size_t const end = help.find(". ");
    std::string_view const sentence = help.substr(0, end);
    return end == std::string_view::npos && sentence.ends_with('.') ? sentence.substr(0, sentence.size() - 1)
                                                                    : sentence;
}

} // namespace

std::string ManPage()
{
    std::string text = ".TH OMBREL 1 \"\" \"ombrel " OMBREL_VERSION "\" \"User Commands\"\n"
                       ".SH NAME\nombrel \\- draw charts from tables and graph documents\n.SH SYNOPSIS\n";
    for (CommandEntry const& command : AllCommands())
        text += ".B " + Roff(command.usage) + "\n.br\n";
    text
        += ".B ombrel\nFILE... [options]\n.SH DESCRIPTION\n"
           "Draws columns of text tables and stored graph documents as pictures (.png, .bmp) and as pages (.pdf, .svg, "
           ".ps).\nWithout a command, the first file decides: a document is drawn, a table is plotted.\n"
           "What was assumed about the input is told under \\-v; what cannot be read is an error with file, line and "
           "column.\n.SH COMMANDS\n";
    for (CommandEntry const& command : AllCommands())
        text += ".TP\n.B " + Roff(command.name) + "\n" + Roff(command.help) + "\n";
    text += ".SH OPTIONS\n";
    for (OptionEntry const& option : AllOptions()) {
        text += ".TP\n.BR " + Roff(Spellings(option, " \", \" "));
        if (!option.argument.empty())
            text += " \" \\fI" + Roff(option.argument) + "\\fP\"";
        text += "\n" + Roff(option.help) + "\n";
        std::string const commands = TakenBy(option);
        if (!commands.empty())
            text += "(" + commands + ")\n";
    }
    text += ".SH EXIT STATUS\n.TP\n.B 0\nDone.\n.TP\n.B 1\nThe data or a file was at fault.\n"
            ".TP\n.B 2\nThe command line was.\n"
            ".SH ENVIRONMENT\n.TP\n.B SOURCE_DATE_EPOCH\n"
            "Seconds since 1970 that pages say they were made at, instead of 0.\n"
            ".SH EXAMPLES\n.nf\n"
            "ombrel plot co2.csv \\-o co2.png\n"
            "ombrel plot sales.csv \\-\\-kind stacked \\-\\-percent \\-o sales.pdf\n"
            "ombrel plot heights.csv \\-y height \\-\\-kind histogram \\-o heights.svg\n"
            "ombrel colours viridis \\-o viridis.png\n.fi\n";
    return text;
}

namespace {

/// In shells: the names of colour maps, one a line. They may have blanks; two of these end a column of the list.
std::string const kListColours = "ombrel colours 2>/dev/null | sed '1d;s/  .*//'";

} // namespace

std::string BashCompletion()
{
    std::string text = "# Completion of ombrel for bash.\n"
                       "# Those of the given words and the names of colour maps that begin with $word.\n"
                       "_ombrel_colours()\n{\n"
                       "    local name\n    COMPREPLY=()\n"
                       "    while IFS= read -r name; do\n"
                       "        [[ $name && $name == \"$word\"* ]] && COMPREPLY+=(\"$(printf %q \"$name\")\")\n"
                       "    done < <(printf '%s\\n' \"$@\"; "
        + kListColours
        + ")\n}\n"
          "_ombrel()\n{\n"
          "    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} options\n"
          "    case $previous in\n";
    for (OptionEntry const& option : AllOptions()) {
        if (option.argument.empty())
            continue;
        text += "        " + Spellings(option, "|") + ") ";
        if (!option.choices.empty())
            text += "COMPREPLY=($(compgen -W " + Quoted(Join(option.choices)) + " -- \"$word\"))";
        else if (option.valueKind == ValueKind::ColourMap)
            text += "_ombrel_colours; COMPREPLY+=($(compgen -f -- \"$word\"))";
        else if (option.valueKind == ValueKind::Palette)
            text += "_ombrel_colours distinct grey";
        else if (option.valueKind == ValueKind::File)
            text += "COMPREPLY=($(compgen -f -- \"$word\"))";
        else
            text += "COMPREPLY=()";
        text += "; return ;;\n";
    }
    text += "    esac\n    case ${COMP_WORDS[1]} in\n";
    auto const optionsOf = [](Command command) {
        std::string words;
        for (OptionEntry const& option : AllOptions()) {
            if (TakesOption(command, option))
                words += (words.empty() ? "" : " ") + Spellings(option, " ");
        }
        return Quoted(words);
    };
    for (CommandEntry const& command : AllCommands())
        text += "        " + std::string(command.name) + ") options=" + optionsOf(command.command) + " ;;\n";
    text += "        *) options=" + optionsOf(Command::None)
        + " ;;\n    esac\n"
          "    if [[ $word == -* ]]; then\n"
          "        COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
          "    elif ((COMP_CWORD == 1)); then\n"
          "        COMPREPLY=($(compgen -W "
        + Quoted(CommandNames())
        + " -- \"$word\") $(compgen -f -- \"$word\"))\n"
          "    else\n"
          "        COMPREPLY=($(compgen -f -- \"$word\"))\n"
          "    fi\n}\n"
          "complete -o filenames -F _ombrel ombrel\n";
    return text;
}

namespace {

/// Text in a description of zsh's _arguments, which brackets and colons would end.
std::string ZshText(std::string_view text)
{
    return Replaced(Replaced(Replaced(text, '[', "\\["), ']', "\\]"), ':', "\\:");
}

/// One argument of zsh's _arguments.
std::string ZshArgument(OptionEntry const& option)
{
    std::string value;
    if (!option.argument.empty())
        value = ":" + ZshText(option.argument) + ":";
    if (!option.choices.empty())
        value += "(" + Join(option.choices) + ")";
    else if (option.valueKind == ValueKind::ColourMap)
        value += "{_ombrel_colours; _files}";
    else if (option.valueKind == ValueKind::Palette)
        value += "{_ombrel_colours distinct grey}";
    else if (option.valueKind == ValueKind::File)
        value += "_files";
    std::string const tail = "[" + ZshText(FirstSentence(option.help)) + "]" + value;
    std::string const repeat = option.repeats ? "*" : "";
    std::string const shortName = ShortOption(option);
    std::string const longName = NameOf(option);
    if (shortName.empty() || shortName == longName)
        return Quoted(repeat + longName + tail);
    std::string const excluded = option.repeats ? "*" : "(" + shortName + " " + longName + ")";
    return Quoted(excluded) + "{" + shortName + "," + longName + "}" + Quoted(tail);
}

} // namespace

std::string ZshCompletion()
{
    std::string text = "#compdef ombrel\n# Completion of ombrel for zsh.\n"
                       "_ombrel_colours()\n{\n    compadd -- \"$@\" \"${(@f)$("
        + kListColours
        + ")}\"\n}\n"
          "_ombrel()\n{\n    local -a commands=(\n";
    for (CommandEntry const& command : AllCommands())
        text += "        " + Quoted(std::string(command.name) + ":" + Replaced(FirstSentence(command.help), ':', "\\:"))
            + "\n";
    text += "    )\n    if ((CURRENT == 2)) && [[ $words[2] != -* ]]; then\n"
            "        _describe command commands\n        _files\n        return\n    fi\n    case $words[2] in\n";
    auto const addArguments = [&text](Command command) {
        text += " _arguments -s";
        for (OptionEntry const& option : AllOptions()) {
            if (TakesOption(command, option))
                text += " \\\n                " + ZshArgument(option);
        }
        text += " \\\n                '*:file:_files' ;;\n";
    };
    for (CommandEntry const& command : AllCommands()) {
        text += "        " + std::string(command.name) + ")";
        addArguments(command.command);
    }
    text += "        *)";
    addArguments(Command::None);
    return text + "    esac\n}\n_ombrel \"$@\"\n";
}

std::string FishCompletion()
{
    std::string text = "# Completion of ombrel for fish.\n";
    auto const quoted
        = [](std::string_view value) { return "'" + Replaced(Replaced(value, '\\', "\\\\"), '\'', "\\'") + "'"; };
    for (CommandEntry const& command : AllCommands())
        text += "complete -c ombrel -n __fish_use_subcommand -a " + std::string(command.name) + " -d "
            + quoted(FirstSentence(command.help)) + "\n";
    for (OptionEntry const& option : AllOptions()) {
        text += "complete -c ombrel";
        std::string const commands = Replaced(TakenBy(option), ',', "");
        if (!commands.empty())
            text += " -n '__fish_use_subcommand; or __fish_seen_subcommand_from " + commands + "'";
        if (option.shortName)
            text += std::string(" -s ") + option.shortName;
        if (option.longName.size() > 1)
            text += " -l " + std::string(option.longName);
        if (!option.choices.empty())
            text += " -x -a " + quoted(Join(option.choices));
        else if (option.valueKind == ValueKind::ColourMap)
            text += " -r -a " + quoted("(" + kListColours + ")");
        else if (option.valueKind == ValueKind::Palette)
            text += " -x -a " + quoted("distinct grey (" + kListColours + ")");
        else if (option.valueKind == ValueKind::File)
            text += " -r";
        else if (!option.argument.empty())
            text += " -x";
        text += " -d " + quoted(FirstSentence(option.help)) + "\n";
    }
    return text;
}

std::string ReadmeReference()
{
    std::string const help = HelpText(Command::None);
    std::size_t const options = help.find("\nOptions:\n");
    std::size_t const end = help.find("\nExit status");
    std::size_t const usage = help.find('\n') + 1;
    return "```text\n" + help.substr(usage, options - usage)
        + "```\n\n<details><summary>All options</summary>\n\n```text\n"
        + help.substr(
            options + std::string_view("\nOptions:\n").size(), end - options - std::string_view("\nOptions:\n").size())
        + "```\n\n</details>\n";
}

} // namespace ombrel::host
