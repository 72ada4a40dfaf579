#!/usr/bin/env bash
# Installs the package in an empty system, uses it there as a player and a maker of games would,
# and removes it: fresh_system.sh ROOT PACKAGE [FOLDER]. ROOT is the folder of the system
# (tools/root.sh), FOLDER is where pictures of the games' windows go. Takes root.
set -euo pipefail
gRoot="$(realpath "$1")"
gPackage="$(realpath "$2")"
gPictures="$(realpath "${3:-$(mktemp -d)}")"
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source tools/shell.sh
source tools/root.sh
source tools/virtual_display.sh

kPatience=120 # seconds that a machine under load may take for anything
gGame=""      # what plays at the moment

fail() {
    echo "fresh_system.sh: $1" >&2
    exit 1
}

# Waits until a command succeeds.
until_() {
    local end=$((SECONDS + kPatience))
    until "$@"; do
        if ((SECONDS > end)); then fail "waited in vain for: $*"; fi
        sleep 0.2
    done
}

# Installing and removing --------------------------------------------------------------------------

# Everything that is in the system but for what a package manager notes and people make.
listFiles() {
    inRoot "$gRoot" find / -xdev \( -path /proc -o -path /dev -o -path /tmp -o -path /home \
        -o -path /root -o -path /srv -o -path /run -o -path /var/log -o -path /var/cache \
        -o -path /var/lib/apt -o -path '/var/lib/dpkg/*-old' \) -prune \
        -o -type f -print -o -type l -print | sort
}

installDependencies() {
    local needed
    needed="$(dpkg-deb --field "$gPackage" Depends)"
    cp "$gPackage" "$gRoot/srv/zel.deb"
    quietly "reading the index" inRoot "$gRoot" apt-get -qq update
    quietly "installing what the package needs" inRoot "$gRoot" \
        apt-get -qq satisfy -y --no-install-recommends "$needed"
}

installPackage() {
    quietly "installing the package" inRoot "$gRoot" dpkg --install /srv/zel.deb
}

removePackage() {
    quietly "removing the package" inRoot "$gRoot" dpkg --purge zel
}

# Using --------------------------------------------------------------------------------------------

maker() {
    asUser 1000 "$gRoot" "$@"
}

madeGame() {
    maker zelkit new mine
    maker zelkit check mine
    maker zelkit test mine
    maker zelkit shot mine
    maker test -s mine.png
    maker zelcheck mine
    maker zelkit pack mine
    maker sh -c 'test -s mine-*.tar.gz'
}

shippedGames() {
    local game
    for game in peons bricks starfall clouds hello; do maker zelkit test "$game"; done
}

saidVersions() {
    local version tool
    version="$(dpkg-deb --field "$gPackage" Version)"
    for tool in zelcheck zelplay zelkit; do
        [[ "$(maker "$tool" --version)" == "$tool (Zel) $version" ]] || fail "the version of $tool"
    done
}

windows() {
    xdotool search --onlyvisible --name '^Zel' 2>/dev/null || true
}

# hasWindows NUMBER
hasWindows() {
    (($(windows | wc -l) == $1))
}

# Whether the screen shows a game, and not one colour only: saves the picture.
showsPicture() {
    saveScreen "$1"
    (($(identify -format %k "$1") > 8))
}

# begin COMMAND...: starts it as a group of processes of its own; its number is in gGame.
begin() {
    set -m
    "$@" &
    gGame=$!
    set +m
}

# end NUMBER...: ends such groups.
end() {
    local group
    for group in "$@"; do
        kill -- "-$group" || fail "a game has ended by itself"
        wait "$group" 2>/dev/null || true
    done
    until_ hasWindows 0
}

# playInWindow NAME COMMAND...: plays it, takes a picture, and ends it.
playInWindow() {
    local name="$1"
    shift
    begin maker "$@"
    until_ hasWindows 1
    until_ showsPicture "$gPictures/$name.png"
    end "$gGame"
}

# The menu starts the show game.
playFromMenu() {
    local command
    command="$(sed -n 's/^Exec=//p' "$gRoot/usr/share/applications/zel-peons.desktop")"
    # shellcheck disable=SC2086  # words of a command
    playInWindow menu $command
}

# Two users play the same game.
playTogether() {
    local first
    begin asUser 1000 "$gRoot" zelkit play peons
    first=$gGame
    begin asUser 1001 "$gRoot" zelkit play peons
    until_ hasWindows 2
    end "$first" "$gGame"
}

checkPackage() {
    local before after
    installDependencies
    before="$(listFiles)"
    installPackage
    saidVersions
    madeGame
    shippedGames
    playInWindow mine zelkit play mine
    playFromMenu
    playTogether
    removePackage
    after="$(listFiles)"
    diff <(echo "$before") <(echo "$after") || fail "the package leaves traces"
}

trap stopVirtualDisplay EXIT
startVirtualDisplay
checkPackage
echo "Pictures: $gPictures"
