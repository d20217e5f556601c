#!/usr/bin/env bash
# Installs the Debian packages that are missing: cmake/install-dependencies.sh [run|bench|lint|package|test-servers]
#   run      what it takes to build the plugin and the workbench, to start it and to run the tests (the default)
#   bench    that, and the plot widgets that the bench compares with
#   lint     that, and what format and lint runs need besides
#   package  what "run" names, and what making and checking Debian packages needs besides
#   test-servers  what "run" names, and the Modbus servers and clients that the tests use where they are found
set -euo pipefail

run_packages=(g++ cmake ninja-build qtbase5-dev qttools5-dev qttools5-dev-tools libqt5svg5 qttranslations5-l10n
              fonts-dejavu-core libmodbus-dev pkg-config cmark-gfm)
bench_packages=(libqwt-qt5-dev libqcustomplot-dev)
lint_packages=(clang clang-format clang-tidy clazy)
package_packages=(dpkg-dev file binutils lintian desktop-file-utils appstream mmdebstrap man-db)
test_server_packages=(python3-pymodbus python3-serial python3-serial-asyncio socat mbpoll)

case "${1:-run}" in
    run) packages=("${run_packages[@]}") ;;
    bench) packages=("${run_packages[@]}" "${bench_packages[@]}") ;;
    lint) packages=("${run_packages[@]}" "${bench_packages[@]}" "${lint_packages[@]}") ;;
    package) packages=("${run_packages[@]}" "${package_packages[@]}") ;;
    test-servers) packages=("${run_packages[@]}" "${test_server_packages[@]}") ;;
    *)
        echo "usage: $0 [run|bench|lint|package|test-servers]" >&2
        exit 2
        ;;
esac

if ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian-like system; the build needs what these packages hold: ${packages[*]}" >&2
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    [[ $status == "install ok installed" ]] || missing+=("$package")
done
if [[ ${#missing[@]} -eq 0 ]]; then
    exit 0
fi

if ! command -v apt-get >/dev/null; then
    echo "These packages are missing, and there is no apt-get to install them: ${missing[*]}" >&2
    exit 1
fi
as_root=()
if [[ $EUID -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing; without sudo only root can install them:" >&2
        echo "    apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
    [[ -t 0 ]] || as_root=(sudo -n) # nobody is there to type a password
fi

echo "Installing with ${as_root[*]:+${as_root[*]} }apt-get: ${missing[*]}" >&2
install() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" \
        </dev/null >&2
}
# The lists of packages may be old or absent: they are fetched first, and an old list is tried when that fails.
"${as_root[@]}" apt-get update -q </dev/null >&2 || echo "The lists of packages could not be fetched." >&2
if ! install; then
    echo "apt-get could not install: ${missing[*]}" >&2
    exit 1
fi
