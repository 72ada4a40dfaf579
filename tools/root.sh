# shellcheck shell=bash
# Empty systems in folders of their own, made with mmdebstrap, for trying what a fresh machine does.
# Sourced by tools/other_system.sh and the checks of the package. Everything here takes root.

gRoots=()    # the folders of all systems that were made
gKeyring=""  # what a foreign system's packages are signed with; empty: the keys of this system
gMirrors=()  # where its packages come from; empty: where mmdebstrap finds them

# Prints the parts of the archive that the project needs packages of.
componentsOf() {
    local components=main
    if grep -qs ",$1," /usr/share/distro-info/ubuntu.csv; then components+=,universe; fi
    echo "$components"
}

# makeRoot SUITE VARIABLE: makes a system of that release and sets VARIABLE to its folder.
makeRoot() {
    local -n folder="$2"
    local options=()
    folder="$(mktemp -d --tmpdir zel-root-XXXXXX)"
    gRoots+=("$folder")
    if [[ -n "$gKeyring" ]]; then options+=(--keyring="$gKeyring"); fi
    quietly "making a system of $1" mmdebstrap --mode=root --variant=apt \
        --components="$(componentsOf "$1")" "${options[@]}" "$1" "$folder" "${gMirrors[@]}"
    cp --dereference /etc/resolv.conf "$folder/etc/resolv.conf"
}

# copyRoot FOLDER VARIABLE: a second system like the first.
copyRoot() {
    local -n copy="$2"
    copy="$(mktemp -d --tmpdir zel-root-XXXXXX)"
    gRoots+=("$copy")
    cp --archive "$1/." "$copy"
}

# inRoot FOLDER COMMAND...: runs it as the root user in there, with nothing of this environment but
# the display. What it starts and mounts ends with it.
inRoot() {
    local folder="$1"
    shift
    # shellcheck disable=SC2016  # the inner shell's own words
    unshare --mount --pid --fork --kill-child sh -c '
        folder="$1"
        shift
        mount -t proc proc "$folder/proc" && mount --rbind /dev "$folder/dev" &&
            mount -t tmpfs tmpfs "$folder/dev/shm" || exit
        exec chroot "$folder" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root TERM=dumb \
            LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive DISPLAY="$DISPLAY" "$@"
    ' sh "$folder" "$@"
}

# asUser NUMBER FOLDER COMMAND...: the same as a user without rights, in a home folder of their own.
asUser() {
    local number="$1" folder="$2" home="/home/user$1"
    shift 2
    if [[ ! -d "$folder$home" ]]; then
        mkdir -p "$folder$home"
        chown "$number:$number" "$folder$home"
    fi
    # shellcheck disable=SC2016
    inRoot "$folder" setpriv --reuid="$number" --regid="$number" --clear-groups env HOME="$home" \
        sh -c 'cd && exec "$@"' sh "$@"
}

removeRoots() {
    if ((${#gRoots[@]} > 0)); then rm -rf --one-file-system "${gRoots[@]}"; fi
    gRoots=()
}
