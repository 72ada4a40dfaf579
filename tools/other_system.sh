#!/usr/bin/env bash
# Tries the project on another release of Debian or Ubuntu. See --help.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source tools/shell.sh
source tools/packages.sh
source tools/root.sh

gSuite=""
gTestWord="" # for test.sh; empty: all stages
gTests=true
gRoot="" # the folder of the system that the project is built in
gLog=""  # what everything said

showHelp() {
    cat <<'HELP'
Usage: tools/other_system.sh [OPTIONS] SUITE [MIRROR]...

Makes an empty system of the release SUITE (bookworm, trixie, jammy, noble), and does there what the
README says: ./run.sh, ./test.sh, and the package, built there and installed in a second empty
system. Says how each went. Takes root, and some time.

    --keyring FILE  what the packages of SUITE are signed with, if this system does not know it
    --stage WORD    only the stages of test.sh with WORD in their names
    --no-tests      leaves test.sh out
    --help          shows this text

MIRROR is where the packages come from, as mmdebstrap takes it; without one, mmdebstrap's choice.
HELP
}

refuse() {
    echo "other_system.sh: $1" >&2
    exit 2
}

readArguments() {
    while (($# > 0)); do
        case "$1" in
            --help | -h)
                showHelp
                exit 0
                ;;
            --keyring | --stage)
                if (($# < 2)); then refuse "$1 wants a word"; fi
                if [[ "$1" == --stage ]]; then gTestWord="$2"; else gKeyring="$(realpath "$2")"; fi
                shift
                ;;
            --no-tests) gTests=false ;;
            -*) refuse "unknown option: $1" ;;
            *) if [[ -z "$gSuite" ]]; then gSuite="$1"; else gMirrors+=("$1"); fi ;;
        esac
        shift
    done
    if [[ -z "$gSuite" ]]; then refuse "which release? See --help"; fi
    if ((EUID != 0)); then refuse "making a system takes root"; fi
}

# The files that are committed, as they are now.
copyProject() {
    mkdir -p "$1/srv/zel"
    git ls-files -z | tar --create --null --files-from=- | tar --extract --directory "$1/srv/zel"
}

# report WHAT COMMAND...: runs it and says how it went; what it says is in the log.
report() {
    local what="$1" started=$SECONDS verdict=ok
    shift
    "$@" >>"$gLog" 2>&1 </dev/null || verdict=FAILED
    printf '%-10s %-28s %-6s %4d s\n' "$gSuite" "$what" "$verdict" $((SECONDS - started))
    if [[ "$verdict" == FAILED ]]; then
        tail -n 25 "$gLog" >&2
        return 1
    fi
}

inProject() {
    # shellcheck disable=SC2016
    inRoot "$gRoot" bash -c 'cd /srv/zel && exec "$@"' bash "$@"
}

tryAll() {
    local failed=0 root package
    unset DISPLAY
    gLog="$(mktemp --tmpdir "zel-$gSuite-XXXXXX.log")"
    makeRoot "$gSuite" gRoot
    copyRoot "$gRoot" root
    copyProject "$gRoot"
    report "./run.sh" inProject ./run.sh || return
    if $gTests; then report "./test.sh $gTestWord" inProject ./test.sh "$gTestWord" || failed=1; fi
    report "./package.sh" inProject ./package.sh || return
    package="$(echo "$gRoot"/srv/zel/build-package/*.deb)"
    report "the package" tests/package/fresh_system.sh "$root" "$package" || failed=1
    echo "All that was said: $gLog"
    return "$failed"
}

readArguments "$@"
installMissing "${kRootPackages[@]}" "${kVirtualDisplayPackages[@]}"
trap removeRoots EXIT
tryAll
