# shellcheck shell=bash
# A display for machines that have none: Xvfb on a free display number, exactly as large as the
# engine's window, so that a picture of the screen is a picture of the window. Sourced by run.sh and
# bench.sh.

gVirtualDisplayPid=""  # of the Xvfb that startVirtualDisplay started; empty while there is none
gVirtualDisplayLog=""  # what that Xvfb says

# Starts the display and points DISPLAY at it. The caller traps EXIT with stopVirtualDisplay.
startVirtualDisplay() {
    local number
    gVirtualDisplayLog="$(mktemp)"
    # Xvfb picks the number itself and writes it once it can be connected to: no race, no waiting.
    # -noreset: it does not start afresh when its last client leaves, for which the next would wait.
    exec {displayPipe}< <(exec Xvfb -displayfd 1 -screen 0 640x480x24 -nolisten tcp -noreset \
        2>"$gVirtualDisplayLog")
    gVirtualDisplayPid=$!
    if ! read -r -t 120 -u "$displayPipe" number; then
        echo "The virtual display did not start:" >&2
        cat "$gVirtualDisplayLog" >&2
        return 1
    fi
    export DISPLAY=":$number" SDL_VIDEODRIVER=x11
}

stopVirtualDisplay() {
    if [[ -n "$gVirtualDisplayPid" ]]; then
        kill "$gVirtualDisplayPid" 2>/dev/null || true
        gVirtualDisplayPid=""
    fi
    if [[ -n "$gVirtualDisplayLog" ]]; then rm -f "$gVirtualDisplayLog"; fi
}

# saveScreen FILE: saves the display's picture.
saveScreen() {
    import -silent -window root "$1"
}
