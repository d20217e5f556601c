#!/usr/bin/env bash
# Brings the translations up to date with the texts in the sources: cmake/update-translations.sh
# New texts are marked as unfinished, to be translated in the .ts files; those that are gone are dropped. Tests fail on
# unfinished ones.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."

update() {
    local file=$1
    shift
    lupdate -silent -locations none -no-obsolete "$@" -ts "$file"
    grep -HnB 1 'type="unfinished"' "$file" || true
}

update workbench/translations/xy-plot-workbench_de.ts workbench
update host/translations/host_de.ts host
update plugin/translations/container_xy_plot_de.ts plugin plotter
