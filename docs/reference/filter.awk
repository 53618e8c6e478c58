# What Doxygen is given in place of a file as it stands. It takes a percent
# sign and an at sign for marks of its own and a number with a point at the start
# of a line for a list, and the headers' "Range: ..." lines begin paragraphs. It
# has no place for what specialises a template of somebody else, nor for friends
# that have no words. Links lead to the site's own pages, or are no links; the
# samples in comments are code, and coloured as such.

function exists(path,   line) { return (getline line < path) >= 0 }

function linked(text,   out, link, words, target) {
    out = ""
    while (match(text, /\[[^][]*\]\([^) ]*\)/)) {
        link = substr(text, RSTART, RLENGTH)
        out = out substr(text, 1, RSTART - 1)
        text = substr(text, RSTART + RLENGTH)
        words = link
        sub(/\]\(.*/, "", words)
        target = substr(link, length(words) + 3)
        sub(/\)$/, "", target)
        sub(/^(\.\.\/)+/, "", target)
        if (target ~ /^time\/[a-z_]*\.h$/)
            link = words "](@ref " target ")"
        else if (target !~ /:/ && target !~ /^#/) {
            sub(/#.*/, "", target)
            if (target !~ /\.[a-z]+$/ || (!exists(target) && !exists("docs/" target)))
                link = substr(words, 2)
        }
        out = out link
    }
    return out text
}

/^template <>$/ { specialises = 1 }
specialises {
    if (/^[^ ].*;$/)
        specialises = 0
    next
}

/^ *friend .*[;}]$/ && !told { next }
{ told = /^ *\/\/\// }

/^ *```/ { fenced = !fenced }

{
    comment = match($0, /^ *\/\/\/ ?/)
    text = comment ? substr($0, RLENGTH + 1) : $0
    lead = comment ? substr($0, 1, RLENGTH) : ""
    if (sample && !(comment && (text ~ /^    / || text == ""))) {
        print sample "@endcode"
        sample = ""
    }
    if (comment && !sample && text ~ /^    / && blank) {
        sample = lead
        print lead "@code{.cpp}"
    }
    blank = comment && text == ""
    prose = !fenced && !sample && text !~ /^    / && (comment || FILENAME ~ /\.md$/)
    if (prose) {
        gsub(/%[A-Za-z]/, "%&", text)
        gsub(/@[a-z]/, "@&", text)
        text = linked(text)
        if (comment && text ~ /^[0-9]+\./)
            sub(/\./, "\\.", text)
        if (comment && text ~ /^[A-Z][a-z]+: /) {
            print lead
            sub(/^[A-Z][a-z]+:/, "**&**", text)
        }
    } else if (sample)
        sub(/^    /, "", text)
    print lead text
}
