#!/usr/bin/env bash
# Runs clazy, level 1, on files of a build folder; any finding in the project's own code is an error.
# cmake/run-clazy.sh BUILD_FOLDER FILE...
set -euo pipefail

build=$1
shift
# Old-style connections are the rule in the rooms that live inside the host; non-POD statics are few and wanted.
checks=level1,no-non-pod-global-static,no-old-style-connect,no-connect-by-name
found=$(clazy-standalone -p "$build" -checks="$checks" --header-filter='/(host|plotter|plugin|workbench)/[^_]*$' \
    "$@" 2>&1 | grep -E 'warning:|error:' | sort -u || true)
if [[ -n $found ]]; then
    printf '%s\n' "$found" >&2
    exit 1
fi
