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

# allow FOLDER HEADERS...: what the sources of workbench/FOLDER, without its subfolders, include in quotes is a header of
# the host or fits one of HEADERS, patterns of paths below workbench/.
allow() {
    local folder=$1 headers
    shift
    headers=$(IFS='|' && echo "host/*|$*")
    headers=${headers//\*/[A-Za-z]+}
    rooms+=("$folder")
    if git grep -nE '#include "' -- ":(glob)workbench/$folder/*.cpp" ":(glob)workbench/$folder/*.h" |
        grep -vE "#include \"($headers)\.h\"" >&2; then
        echo "  workbench/$folder may use: $*" >&2
        status=1
    fi
}

forbid host plotter plugin workbench
forbid plotter plugin workbench
forbid plugin workbench
forbid workbench plotter plugin

# Inside the workbench every include names the room of its header.
rooms=()
allow . 'PlotterWindow'
allow application 'PlotterWindow' 'application/*' 'window/*' 'setup/*' 'logging/*' 'modules/*' 'modules/*/*'
allow window 'PlotterWindow' 'window/*' 'setup/*' 'reading/*' 'logging/*' 'modules/*' 'modules/*/*'
allow setup 'PlotterWindow' 'setup/*' 'reading/*' 'modules/*' 'modules/*/*'
allow logging 'PlotterWindow' 'logging/*' 'modules/*' 'modules/*/*'
allow modules 'modules/*' 'modules/*/*'
allow reading 'reading/*'
# A family of modules uses no other family, nor the rack that holds its modules.
for kind in $(git ls-files 'workbench/modules/*/*.h' | cut -d/ -f3 | sort -u); do
    allow "modules/$kind" "modules/$kind/*" 'reading/*'
done
for folder in $(git ls-files 'workbench/*.h' 'workbench/*.cpp' | xargs -n 1 dirname | sort -u); do
    folder=${folder#workbench}
    folder=${folder#/}
    if [[ " ${rooms[*]} " != *" ${folder:-.} "* ]]; then
        echo "  nothing says what workbench/$folder may use" >&2
        status=1
    fi
done

if git grep -nE '#include ["<]host/' -- '*.h' '*.cpp' | grep -vE '#include "host/[A-Za-z]+\.h"' >&2; then
    echo '  the headers of the host are included as "host/Name.h"' >&2
    status=1
fi
exit $status
