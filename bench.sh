#!/usr/bin/env bash
# Builds the measurements of bench/, runs them and prints one table. See --help.
set -euo pipefail
caller="$PWD"  # paths in the options start there
cd "$(dirname "${BASH_SOURCE[0]}")"
root="$PWD"
source tools/shell.sh
source tools/packages.sh
source tools/virtual_display.sh

showHelp() {
    cat <<'HELP'
Usage: ./bench.sh [--runs N] [--rounds N] [--before ZEL]

Installs the packages that are missing, builds the engine and the measurements,
and prints a table: scripts against python3, drawing and start-up against bare
SDL calls, games by the plays that win them. docs/performance.md explains it and keeps one.

    --runs N      measures everything N times: the table then has the least, the
                  median and the most of each (default 1)
    --rounds N    how often scripts and parts are measured in a run; the least
                  counts (default 7)
    --before ZEL  compares the scripts with another executable of the engine too
    --help        shows this text
HELP
}

case "${1:-}" in
    --help | -h)
        showHelp
        exit 0
        ;;
esac
installMissing "${kRunPackages[@]}" "${kVirtualDisplayPackages[@]}" "${kBenchPackages[@]}"
tests=OFF
if isInstalled libgtest-dev; then tests=ON; fi
echo "Building..."
quietly "configuring" cmake --preset release -DZEL_BENCH=ON -DZEL_TESTS="$tests"
quietly "building" cmake --build build \
    --target zel zelplay parts_bench draw_bench first_frame first_load bare_sdl
trap stopVirtualDisplay EXIT
startVirtualDisplay
cd "$caller"
/usr/bin/python3 "$root/bench/run.py" "$root/build" "$@"
