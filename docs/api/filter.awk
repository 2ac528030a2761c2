# Lets Doxygen read the headers as they are written: plain comments above declarations. A comment stands for every
# declaration of the paragraph that it opens. Lines keep their numbers, so warnings name the right ones.

function text(line) {
    sub(/^ *\/\/ ?/, "", line)
    return line
}

# A declaration without a comment of its own that needs none.
function standard(line) {
    if (line ~ /^ *[A-Z][A-Za-z0-9_]*( = [A-Za-z0-9_| ]+)?,?$/)
        return "As the name says."
    if (line ~ /override/)
        return line ~ /~/ ? "Destroys the object." : "Reimplemented."
    return line ~ /~/ ? "Destroys the object." : ""
}

function is_enumerator(line) {
    return line ~ /^ *[A-Z][A-Za-z0-9_]*( = [^;(]*)?,?$/
}

{
    sub(/\r$/, "")
    indent = match($0, /[^ ]/) - 1
}

/^\/\*$/ { print "/**"; in_block = 1; next }
in_block {
    if (/\*\//) { in_block = 0; after_block = 1 }
    print
    next
}

/^ *\/\/ ?/ {
    comment = (comment_open ? comment " " : "") text($0)
    comment_open = 1
    comment_indent = indent
    shown = 0
    print ""
    next
}

# An inline body does not end the paragraph that its function stands in.
/^ *[{}]$/ && indent == comment_indent { print; next }
/^$/ || /^ *(public|protected|private|signals|public slots):$/ || /^ *[{}]/ || /^#/ {
    comment_open = 0
    comment = ""
    after_block = 0
    print
    next
}

# The beginning of a declaration.
/^ *[A-Za-z_~\[]/ && !/^ *(Q_[A-Z_]+\(|Q_OBJECT|friend|using [A-Za-z:]+;|namespace|return|[A-Z_]+\()/ {
    comment_open = 0
    own = ""
    if (comment != "" && indent == comment_indent) {
        own = shown && /~/ ? standard($0) : comment
        shown = 1
        if (is_enumerator($0) || /[{]$/)
            comment = ""
    } else if (!after_block)
        own = standard($0)
    after_block = 0
    print own == "" ? $0 : "/** " own " */ " $0
    next
}

{ comment_open = 0; print }
