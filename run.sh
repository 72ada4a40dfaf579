#!/usr/bin/env bash
# Installs what is missing, builds the engine and hands on to kit/zelkit. See --help.
set -euo pipefail
gUserFolder="$PWD"  # where paths in arguments and messages start
cd "$(dirname "${BASH_SOURCE[0]}")"
gProject="$PWD"
source tools/shell.sh
source tools/packages.sh
source tools/virtual_display.sh

kPlaySeconds=5  # how long a game is played where nobody can see it
kScreenshot=build/screenshot.png

gGame=""
gNewGame=""     # the name of the game to make, with --new
gTests=false    # play the game's plays in place of the game
gPlayOptions=() # for zelkit play
gGamePid=""     # of the zelkit that playUnseen started; empty while there is none

showHelp() {
    cat <<'HELP'
Usage: ./run.sh [--force] [GAME]
       ./run.sh --new NAME
       ./run.sh --test [GAME]

Installs the packages that are missing, builds the engine and plays GAME: the name
of a game in games/, or the folder of any other (without GAME: the show game). Where
there is no display, the game is played for 5 seconds in a virtual one and a picture
of its window is saved.

The game's script is checked first; errors found there are shown and keep it from
starting.

    --force      starts the game all the same
    --new NAME   makes games/NAME, a small game to begin with, and plays it
    --test       plays all plays of the game (games/GAME/plays/*.play), unseen, and says
                 how each went; the status is 1 if one failed
    --help       shows this text

All of this is done by kit/zelkit, which can do more: kit/zelkit --help.

ZEL_TICKS=main is set for the game unless you have set ZEL_TICKS yourself: timers
then run on the same thread as keys and drawing. The README tells more.
HELP
}

# Steps --------------------------------------------------------------------------------------------

refuse() {
    echo "run.sh: $1" >&2
    echo "Try ./run.sh --help" >&2
    exit 2
}

# Settles gGame.
readArguments() {
    while (($# > 0)); do
        case "$1" in
            --help | -h)
                showHelp
                exit 0
                ;;
            --force) gPlayOptions+=(--force) ;;
            --test) gTests=true ;;
            --new)
                if (($# < 2)); then refuse "--new wants the name of the new game"; fi
                gNewGame="$2"
                shift
                ;;
            -*) refuse "unknown option: $1" ;;
            *)
                if [[ -n "$gGame" ]]; then refuse "one game at a time, please"; fi
                gGame="$1"
                ;;
        esac
        shift
    done
    if [[ -n "$gNewGame" && -n "$gGame" ]]; then refuse "--new plays the game that it makes"; fi
    gGame="${gNewGame:-${gGame:-peons}}"
}

hasDisplay() {
    [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]
}

installPackages() {
    local packages=("${kRunPackages[@]}")
    if ! hasDisplay && ! $gTests; then packages+=("${kVirtualDisplayPackages[@]}"); fi
    installMissing "${packages[@]}"
}

# The tests' libraries need not be there for playing; where they are, the tests stay configured.
buildEngine() {
    local tests=OFF
    if isInstalled libgtest-dev; then tests=ON; fi
    echo "Building..."
    quietly "configuring" cmake --preset release -DZEL_TESTS="$tests"
    quietly "building" cmake --build build --target zel zelcheck zelplay
}

# With --new: the game is made in games/, wherever the user is.
makeNewGame() {
    if [[ -n "$gNewGame" ]]; then kit/zelkit new "games/$gNewGame"; fi
}

# zelkit COMMAND...: from where the user is. The standard input of a game is run.sh's own, for
# scripts that read keys from the terminal.
zelkit() {
    cd "$gUserFolder"
    exec "$gProject/kit/zelkit" "$@"
}

# Play ---------------------------------------------------------------------------------------------

# zelkit ends the game if it does not end by itself.
stopGame() {
    if [[ -z "$gGamePid" ]]; then return 0; fi  # in a trap, a bare return fails as the script did
    kill -TERM "$gGamePid" 2>/dev/null || true
    wait "$gGamePid" 2>/dev/null || true
    gGamePid=""
}

tidyUp() {
    stopGame
    stopVirtualDisplay
}

# Waits for up to kPlaySeconds. Returns false, as soon as it happens, if the game ends by itself.
watchGame() {
    local end=$((SECONDS + kPlaySeconds))
    while ((SECONDS < end)); do
        if ! kill -0 "$gGamePid" 2>/dev/null; then return 1; fi
        sleep 0.1
    done
}

playUnseen() {
    local status=0
    echo "There is no display here (neither DISPLAY nor WAYLAND_DISPLAY is set):"
    echo "playing \"$gGame\" for $kPlaySeconds seconds in a virtual one."
    trap tidyUp EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    startVirtualDisplay
    zelkit play "${gPlayOptions[@]}" "$gGame" &
    gGamePid=$!
    if watchGame; then
        saveScreen "$kScreenshot"
        echo
        echo "A picture of the window: $kScreenshot"
        return
    fi
    wait "$gGamePid" || status=$?
    gGamePid=""
    echo
    echo "The game ended by itself, with status $status: no picture was taken." >&2
    return "$status"
}

readArguments "$@"
installPackages
buildEngine
makeNewGame
if $gTests; then
    zelkit test "$gGame"
elif hasDisplay; then
    zelkit play "${gPlayOptions[@]}" "$gGame"
else
    playUnseen
fi
