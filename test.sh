#!/usr/bin/env bash
# Builds the project in every way it is tested in and runs all tests. See --help.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source tools/shell.sh
source tools/packages.sh

# The stages in order: name, a colon, what runs. The first that fails ends the run.
kStages=(
    "release build: build release -DZEL_TESTS=ON -DZEL_BENCH=OFF"
    "release tests: runTests release"
    "asan build: build asan"
    "asan tests: runTests asan"
    "tsan build: buildEngine tsan"
    "fuzz build: build fuzz"
    "tsan play, fuzz tests: playAndFuzz"
)

# Those that run only if their name is asked for, as they take too long for every time.
kLongStages=(
    "package: tests/package/check.sh"
)

gSummary=()  # one line a finished stage

showHelp() {
    cat <<'HELP'
Usage: ./test.sh [WORD]

Installs the packages that are missing, builds every preset with warnings as errors, and runs all
tests in each. With WORD, only the stages that have WORD in their name:

HELP
    local stage
    for stage in "${kStages[@]}"; do echo "    ${stage%%:*}"; done
    echo
    echo "Only with WORD, as they take long:"
    echo
    for stage in "${kLongStages[@]}"; do echo "    ${stage%%:*}"; done
}

# Stage commands -----------------------------------------------------------------------------------

# build PRESET [OPTION...]: the options are for CMake. The release preset needs to be told to build
# the tests, as run.sh may have set it up without them.
build() {
    cmake --preset "$1" -DZEL_WERROR=ON "${@:2}" && cmake --build "$(buildFolder "$1")"
}

# buildEngine PRESET: the executable alone.
buildEngine() {
    cmake --preset "$1" -DZEL_WERROR=ON && cmake --build "$(buildFolder "$1")" --target zel
}

# runTests PRESET [OPTION...]: the tests side by side; the options are for ctest. There are more of
# them than processors, as many wait most of their time. A preset without tests is a mistake, not a
# success.
runTests() {
    ctest --test-dir "$(buildFolder "$1")" --output-on-failure --no-tests=error \
        -j "$(($(nproc) + 6))" "${@:2}"
}

# The fuzzers work for a fixed time; the play beside them waits most of its own.
playAndFuzz() {
    local play failed=0
    runTests tsan -R play/soak &
    play=$!
    runTests fuzz || failed=1
    wait "$play" || failed=1
    return "$failed"
}

# Running the table --------------------------------------------------------------------------------

installPackages() {
    local runtime
    installMissing "${kRunPackages[@]}" "${kVirtualDisplayPackages[@]}" "${kTestPackages[@]}"
    runtime="$(fuzzerRuntimePackage)"
    if [[ -n "$runtime" ]]; then installMissing "$runtime"; fi
}

# duration SECONDS: prints it as minutes and seconds.
duration() {
    printf '%d:%02d' $(($1 / 60)) $(($1 % 60))
}

# runStage NAME COMMAND: runs the command and adds its line to the summary.
runStage() {
    local name="$1" started=$SECONDS words status=0 verdict=ok
    read -ra words <<<"$2"
    echo "== $name"
    quietly "$name" "${words[@]}" || status=$?
    if ((status != 0)); then verdict=FAILED; fi
    gSummary+=("$(printf '%-22s %-6s %6s' "$name" "$verdict" "$(duration $((SECONDS - started)))")")
    return "$status"
}

showSummary() {
    if ((${#gSummary[@]} == 0)); then return; fi
    echo
    printf '%s\n' "${gSummary[@]}"
    echo "total $(duration "$SECONDS")"
}

runStages() {
    local word="$1" stage name stages=("${kStages[@]}")
    if [[ -n "$word" ]]; then stages+=("${kLongStages[@]}"); fi
    for stage in "${stages[@]}"; do
        name="${stage%%:*}"
        if [[ "$name" != *"$word"* ]]; then continue; fi
        runStage "$name" "${stage#*:}" || return
    done
    if ((${#gSummary[@]} == 0)); then
        echo "test.sh: no stage has \"$word\" in its name; see --help" >&2
        return 2
    fi
}

case "${1:-}" in
    --help | -h)
        showHelp
        exit 0
        ;;
    -*)
        echo "test.sh: unknown option: $1" >&2
        exit 2
        ;;
esac
installPackages
trap showSummary EXIT
runStages "${1:-}"
