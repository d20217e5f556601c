#!/usr/bin/env bash
# Fails when a room includes a header of a room that it may not use.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
status=0

# forbid ROOM FORBIDDEN_ROOM...: no file of ROOM may include a header that lives in FORBIDDEN_ROOM.
forbid() {
    local room=$1 other header
    shift
    for other in "$@"; do
        while read -r header; do
            if git grep -nE "#include [<\"]([^\">]*/)?$(basename "$header")[\">]" -- "$room/*.h" "$room/*.cpp" |
                grep -vE "\"host/$(basename "$header")\"" | grep . >&2; then
                echo "  $room must not use $other" >&2
                status=1
            fi
        done < <(git ls-files "$other/*.h")
    done
}

# allow FOLDER PATTERN: every header that a source of workbench/FOLDER, without its subfolders, includes in quotes is in
# a folder that fits PATTERN, or one of the host.
allow() {
    local folder=$1 pattern=$2
    if ! git ls-files ":(glob)workbench/$folder/*.cpp" ":(glob)workbench/$folder/*.h" | grep -q .; then
        echo "  workbench/$folder has no sources: mend the list of rooms in $0" >&2
        status=1
    fi
    if git grep -nE '#include "' -- ":(glob)workbench/$folder/*.cpp" ":(glob)workbench/$folder/*.h" |
        grep -vE "#include \"(host/[A-Za-z]+|($pattern)[A-Za-z]+)\.h\"" >&2; then
        echo "  workbench/$folder may use: $pattern" >&2
        status=1
    fi
}

forbid host plotter plugin workbench
forbid plotter plugin workbench
forbid plugin workbench
forbid workbench plotter plugin

# Inside the workbench every include names the room of its header.
allow application 'application/|window/|setup/|logging/|modules/([a-z]+/)?'
allow window 'window/|setup/|logging/|modules/([a-z]+/)?'
allow setup 'setup/|modules/([a-z]+/)?'
allow logging 'logging/|modules/([a-z]+/)?'
allow modules 'modules/([a-z]+/)?'
# A kind of module knows no other kind, and nothing of the rack that holds it.
for kind in $(git ls-files 'workbench/modules/*/*.h' | cut -d/ -f3 | sort -u); do
    allow "modules/$kind" "modules/$kind/"
done

if git grep -nE '#include ["<]host/' -- '*.h' '*.cpp' | grep -vE '#include "host/[A-Za-z]+\.h"' >&2; then
    echo '  the headers of the host are included as "host/Name.h"' >&2
    status=1
fi
exit $status
