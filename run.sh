#!/usr/bin/env bash
# Builds the engine and plays a game of games/. See --help.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source tools/shell.sh
source tools/packages.sh
source tools/virtual_display.sh

kPlaySeconds=5  # how long a game is played where nobody can see it
kQuitSeconds=60 # how long it may take to quit, on a busy machine, before it is ended
kScreenshot=build/screenshot.png

gGame=""
gNewGame=""  # the name of the game to make, with --new
gTests=false # play the game's plays in place of the game
gForce=false # start the game whatever the checker finds
gGamePid=""  # of the game that playUnseen started; empty while there is none

showHelp() {
    cat <<'HELP'
Usage: ./run.sh [--force] [GAME]
       ./run.sh --new NAME
       ./run.sh --test [GAME]

Installs the packages that are missing, builds the engine and plays games/GAME
(without GAME: the show game). Where there is no display, the game is played
for 5 seconds in a virtual one and a picture of its window is saved.

The game's script is checked first; errors found there are shown and keep it from
starting.

    --force      starts the game all the same
    --new NAME   makes games/NAME, a small game to begin with, and plays it
    --test       plays all plays of the game (games/GAME/plays/*.play), unseen, and says
                 how each went; the status is 1 if one failed
    --help       shows this text

ZEL_TICKS=main is set for the game unless you have set ZEL_TICKS yourself: timers
then run on the same thread as keys and drawing. The README tells more.
HELP
    echo
    listGames
}

# Games --------------------------------------------------------------------------------------------

isGame() {
    [[ "$1" != */* && -f "games/$1/levels/level1/script.txt" ]]
}

listGames() {
    local folder
    echo "Games:"
    for folder in games/*/; do
        folder="$(basename "$folder")"
        if isGame "$folder"; then echo "    $folder"; fi
    done
}

defaultGame() {
    if isGame peons; then echo peons; else echo hello; fi
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
            --force) gForce=true ;;
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
    gGame="${gNewGame:-${gGame:-$(defaultGame)}}"
}

# With --new: copies the template.
makeNewGame() {
    if [[ -z "$gNewGame" ]]; then return; fi
    if [[ ! "$gNewGame" =~ ^[A-Za-z0-9_-]+$ ]]; then
        refuse "a game's name has letters, digits, \"-\" and \"_\" only: $gNewGame"
    fi
    if [[ -e "games/$gNewGame" ]]; then refuse "games/$gNewGame is there already"; fi
    cp -r games/template "games/$gNewGame"
    rm -f "games/$gNewGame/arial.ttf"
    echo "Made games/$gNewGame: its script is games/$gNewGame/levels/level1/script.txt"
}

requireGame() {
    if isGame "$gGame"; then return; fi
    echo "run.sh: there is no game \"$gGame\"" >&2
    listGames >&2
    exit 2
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

# Shows what the checker finds; errors (status 2 and above) stop here, unless --force.
checkGame() {
    local status=0
    (cd "games/$gGame" && ../../build/zelcheck) || status=$?
    if ((status < 2)) || $gForce; then return; fi
    echo "run.sh: \"$gGame\" was not started; ./run.sh --force $gGame starts it all the same" >&2
    return "$status"
}

# The game finds its level, its pictures and its font in its working directory. Its standard input
# is run.sh's own, for scripts that read keys from the terminal.
startGame() {
    cd "games/$gGame"
    exec ../../build/zel
}

# Play ---------------------------------------------------------------------------------------------

# Asks the game to quit, and ends it if it does not.
stopGame() {
    if [[ -z "$gGamePid" ]]; then return; fi
    kill -TERM "$gGamePid" 2>/dev/null || true
    local end=$((SECONDS + kQuitSeconds))
    while ((SECONDS < end)) && kill -0 "$gGamePid" 2>/dev/null; do sleep 0.1; done
    kill -KILL "$gGamePid" 2>/dev/null || true
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
    startGame &
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

play() {
    export ZEL_TICKS="${ZEL_TICKS-main}"
    if hasDisplay; then startGame; else playUnseen; fi
}

# Plays --------------------------------------------------------------------------------------------

# Plays one play and says in a line how it went, and below that why it failed.
playPlay() {
    local name complaints
    name="$(basename "$1" .play)"
    if complaints="$(build/zelplay "games/$gGame" "$1" 2>&1 >/dev/null)"; then
        printf '%-20s ok\n' "$name"
    else
        printf '%-20s failed\n%s\n' "$name" "$complaints"
        return 1
    fi
}

playAllPlays() {
    local play status=0
    if ! compgen -G "games/$gGame/plays/*.play" >/dev/null; then
        refuse "\"$gGame\" has no plays in games/$gGame/plays; docs/play.md tells what they are"
    fi
    for play in "games/$gGame/plays/"*.play; do playPlay "$play" || status=1; done
    return "$status"
}

readArguments "$@"
makeNewGame
requireGame
installPackages
buildEngine
if $gTests; then
    playAllPlays
else
    checkGame
    play
fi
