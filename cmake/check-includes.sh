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

forbid host plotter plugin workbench
forbid plotter plugin workbench
forbid plugin workbench
forbid workbench plotter plugin

if git grep -nE '#include ["<]host/' -- '*.h' '*.cpp' | grep -vE '#include "host/[A-Za-z]+\.h"' >&2; then
    echo '  the headers of the host are included as "host/Name.h"' >&2
    status=1
fi
exit $status
