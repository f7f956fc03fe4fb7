# SPDX-License-Identifier: LGPL-2.1-or-later
#
# What the headers leave to the reader's eye, written out for Doxygen:
#
#   - a comment holds for all declarations below it, up to an empty line or the next comment;
#   - a property is what the operation says that reads it;
#   - places that are reserved, and destructors of which there is nothing to say, are left out.
#
# A declaration that no comment stands above remains without one, and Doxygen warns of it.

function isComment(line) { return line ~ /^ *\/\/\/([^<]|$)/ }
function endsShare(line) {
    return line ~ /^ *$|^ *[{}]|^ *(public|private|protected)|^ *(Q_SIGNALS|Q_OBJECT|Q_DISABLE)|^ *(enum|struct|class|friend|namespace|VESK_|#)/
}

{ lines[NR] = $0 }

END {
    comment = ""
    fresh = open = 0
    for (i = 1; i <= NR; ++i) {
        if (isComment(lines[i])) {
            comment = (fresh ? comment "\n" : "") lines[i]
            fresh = 1
        } else if (open) {
            open = lines[i] !~ /[;}] *(\/\/\/<.*)?$/
        } else {
            if (!fresh && (endsShare(lines[i]) || lines[i] ~ /\/\/\/</))
                comment = ""
            own[i] = fresh
            of[i] = comment
            fresh = 0
            # Goes on in the next lines: those have no comment of their own.
            open = lines[i] ~ /\(/ && lines[i] !~ /[;{}] *(\/\/\/<.*)?$/ && lines[i] !~ /Q_[A-Z]+\(/ \
                && lines[i] !~ /^#/
            if (match(lines[i], /[A-Za-z]+\(\)/))
                reads[substr(lines[i], RSTART, RLENGTH - 2)] = comment
        }
    }
    for (i = 1; i <= NR; ++i) {
        line = lines[i]
        if (line ~ /(reserved|padding)[0-9]+/ || (line ~ /~[A-Za-z]+\(\)/ && !own[i])) {
            print ""
            continue
        }
        if (line ~ /Q_PROPERTY\( *$/) {
            line = line lines[i + 1]
            lines[++i] = ""
        }
        if (line ~ /Q_PROPERTY\(/ && match(line, /READ [A-Za-z]+/))
            print reads[substr(line, RSTART + 5, RLENGTH - 5)]
        else if (!own[i] && of[i] != "" && line !~ /\/\/\/</)
            print of[i]
        print line
    }
}
