# Lists the faults that can be planted in C++ sources, one a line: KIND <tab> FILE <tab> LINE <tab> the
# line with the fault.  KIND is comparison, constant, operand or statement.
#
# It reads the tree's own format: a statement a line, blanks round operators.

function offer(kind, at, length_, with) {
    printf "%s\t%s\t%d\t%s\n", kind, FILENAME, FNR, \
           substr($0, 1, at - 1) with substr($0, at + length_)
}

# The line with the text of strings, characters and comments blotted out, as long as it was.
function code_of(line,    i, c, quote, result) {
    quote = ""
    result = ""
    for (i = 1; i <= length(line); i++) {
        c = substr(line, i, 1)
        if (quote != "") {
            if (c == "\\") { i++; result = result "~" }
            else if (c == quote) quote = ""
            c = "~"
        } else if (c == "\"" || (c == "'" && substr(line, i - 1, 1) !~ /[0-9A-Fa-f]/)) {
            quote = c
            c = "~"
        } else if (substr(line, i, 2) == "//") {
            return result
        }
        result = result c
    }
    return result
}

# Each place where `pattern` fits; `kind` and `from`, `to` as fixed texts within it.
function replace_each(code, kind, from, to,    at, found) {
    at = 1
    while ((found = index(substr(code, at), from)) > 0) {
        offer(kind, at + found - 1, length(from), to)
        at += found + length(from) - 1
    }
}

function comparisons(code,    i, pair) {
    for (i = 1; i <= num_comparisons; i++) {
        split(comparison[i], pair, ",")
        replace_each(code, "comparison", " " pair[1] " ", " " pair[2] " ")
    }
    replace_each(code, "comparison", "(!", "(")
}

function constants(code,    at, text, before, after, number) {
    if (code ~ /\[[0-9]+\](;| = |\{)/) return # the length of an array
    at = 1
    while (match(substr(code, at), /[0-9][0-9A-Za-z_.]*/)) {
        at += RSTART - 1
        text = substr(code, at, RLENGTH)
        before = substr(code, at - 1, 1)
        if (before !~ /[A-Za-z0-9_.']/ && text !~ /^0[xX]/ && match(text, /^[0-9]+/)) {
            number = substr(text, 1, RLENGTH)
            if (length(number) < 10) offer("constant", at, RLENGTH, sprintf("%d", number + 1))
        } else if (before !~ /[A-Za-z0-9_.']/ && match(text, /^0[xX][0-9A-F]+/)) {
            after = substr(text, RLENGTH, 1)
            offer("constant", at + RLENGTH - 1, 1, after == "F" ? "7" : after == "9" ? "A" : \
                  after ~ /[0-8]/ ? after + 1 : substr("BCDEF", index("ABCDE", after), 1))
        }
        at += length(text)
    }
    replace_each(code, "constant", "true", "false")
    replace_each(code, "constant", "false", "true")
}

# Exchanges what stands on both sides of `middle`, a text between two simple operands.
function exchange(code, middle, pattern, left_length, right_length,    at, text, cut, left, right) {
    at = 1
    while (match(substr(code, at), pattern)) {
        at += RSTART - 1
        text = substr(code, at + left_length, RLENGTH - left_length - right_length)
        cut = index(text, middle)
        left = substr(text, 1, cut - 1)
        right = substr(text, cut + length(middle))
        if (left != right) offer("operand", at + left_length, length(text), right middle left)
        at += RLENGTH - right_length
    }
}

function operands(code) {
    exchange(code, " - ", simple " - " simple, 0, 0)
    exchange(code, " / ", simple " / " simple, 0, 0)
    exchange(code, " % ", simple " % " simple, 0, 0)
    exchange(code, ", ", "[(]" simple ", " simple "[)]", 1, 1)
    exchange(code, " : ", "[?] " simple " : " simple "[;,)]", 2, 1)
    replace_each(code, "operand", " + ", " - ")
    replace_each(code, "operand", " - ", " + ")
    replace_each(code, "operand", " += ", " -= ")
    if (code ~ /^ *for /) return # would only never end
    replace_each(code, "operand", "++", "--")
    replace_each(code, "operand", "--", "++")
}

function statements(code) {
    if (previous !~ /([;{}:)]|else)$/) return
    if (code ~ /^ +[A-Za-z_][A-Za-z0-9_.:>()*-]*(\[[^]]*\])?( [-+*\/|&^]?= .*| <<.*|\(.*\)|\+\+|--);$/ ||
        code ~ /^ +(break|continue|return);$/ || code ~ /^ +(\+\+|--).*;$/) {
        match(code, /^ +/)
        offer("statement", RLENGTH + 1, length(code) - RLENGTH, ";")
    }
}

BEGIN {
    num_comparisons = split("<,<= <,>= <=,< >,>= >,<= >=,> ==,!= !=,== &&,|| ||,&&", comparison, " ")
    simple = "[A-Za-z_][A-Za-z0-9_.:]*([(][A-Za-z0-9_.]*[)])?([[][A-Za-z0-9_. +*]*[]])?"
}

FNR == 1 { previous = "" }

{
    code = code_of($0)
    sub(/ +$/, "", code)
    if (code == "") next
    # An assertion holds in any test, a log line may say anything.
    if (code !~ /^#/ && code !~ /TARQ_ASSERT|static_assert|logPrintf|^namespace|^using|^template/) {
        comparisons(code)
        constants(code)
        operands(code)
        statements(code)
    }
    previous = code
}
