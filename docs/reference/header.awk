# What Doxygen reads in place of a header (FILTER_PATTERNS), line for line: everything in the header's one block of namespace
# ombrel is in the group of its folder, a comment holds for the setter and the overloads that follow without a blank line, too,
# and a backslash in a comment is one.

BEGIN {
    group = ARGV[1]
    sub(/\/[^\/]*$/, "", group)
    sub(/^.*\/ombrel\//, "", group)
    sub(/^.*\/ombrel$/, "ombrel", group)
    gsub(/\//, "_", group)
}

function topic(name)
{
    sub(/^(Get|Set|Is|Has)/, "", name)
    return name
}

/^[ \t]*\/\/\// {
    gsub(/\\[a-z]/, "\\\\&")
    text = $0
    sub(/^[ \t]*\/\/\/ ?/, "", text)
    comment = comment == "" ? text : comment " " text
    print
    next
}

/^namespace ombrel[a-z:]* \{/ { $0 = $0 " /** @addtogroup " group " */ /** @{ */" }
/^\} \/\/ namespace ombrel/ { $0 = "/** @} */ " $0 }

/^[ \t]*$/ { previous = "" }

match($0, /[~A-Za-z_0-9]+\(/) {
    name = substr($0, RSTART, RLENGTH - 1)
    match($0, /^ */)
    if (comment != "") {
        previous = comment
        previousTopic = topic(name)
        indent = RLENGTH
    } else if (previous != "" && RLENGTH == indent) {
        if (topic(name) == previousTopic)
            $0 = "/** " previous " */ " $0
        else
            previous = ""
    }
}

{
    comment = ""
    print
}
