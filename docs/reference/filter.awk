# What Doxygen is given in place of a file as it stands. It takes a percent
# sign for a mark of its own and a number with a point at the start of a line
# for a list, and the headers' "Range: ..." lines begin paragraphs. It has no
# place for what specialises a template of somebody else.

/^template <>$/ { specialises = 1 }
specialises {
    if (/^[^ ].*;$/)
        specialises = 0
    next
}

/^ *```/ { fenced = !fenced }

{
    comment = match($0, /^ *\/\/\/ ?/)
    text = comment ? substr($0, RLENGTH + 1) : $0
    lead = comment ? substr($0, 1, RLENGTH) : ""
    prose = !fenced && text !~ /^    / && (comment || FILENAME ~ /\.md$/)
    if (prose) {
        gsub(/%[A-Za-z]/, "%&", text)
        if (comment && text ~ /^[0-9]+\./)
            sub(/\./, "\\.", text)
        if (comment && text ~ /^[A-Z][a-z]+: /) {
            print lead
            sub(/^[A-Z][a-z]+:/, "**&**", text)
        }
    }
    print lead text
}
