# shellcheck shell=bash
# Small helpers that run.sh, test.sh and bench.sh share. Sourced after `set -euo pipefail`, with the
# project's root as working directory.

# quietly WHAT COMMAND...: runs COMMAND and keeps its output back unless it fails; then all of it is
# shown, and COMMAND's status returned. A shell function as COMMAND must return its first failure
# itself: `set -e` is off in there.
quietly() {
    local what="$1" name log readLog status=0
    shift
    # A file, as a pipe would wait for whatever COMMAND leaves running; nameless, so that it goes
    # away however this script ends.
    name="$(mktemp)"
    exec {log}>"$name"
    exec {readLog}<"$name"
    rm "$name"
    "$@" >&"$log" 2>&1 || status=$?
    if ((status != 0)); then
        cat <&"$readLog" >&2
        echo "Failed: $what (status $status)" >&2
    fi
    exec {log}>&- {readLog}<&-
    return "$status"
}

# buildFolder PRESET: prints the folder that a CMake preset builds into.
buildFolder() {
    if [[ "$1" == release ]]; then echo build; else echo "build-$1"; fi
}
