# shellcheck shell=bash
# The Debian and Ubuntu packages that the project needs, and their installation. Sourced by run.sh
# and test.sh; this is the only list.
#
# Nothing is touched, not even the package index, while everything needed is there.
# shellcheck disable=SC2034  # the lists are read by the scripts that source this

# What building and playing need. The last three are the OpenGL ES that the renderer draws with;
# SDL opens them by name at run time, so no other package pulls them in. zelkit runs with the
# python3 of these packages, whichever comes first on PATH: modules belong to one interpreter.
kRunPackages=(
    g++ cmake ninja-build pkg-config
    libsdl2-dev libsdl2-image-dev libsdl2-ttf-dev
    fonts-liberation
    python3 python3-watchdog
    libgles2 libegl1 libgl1-mesa-dri
)

# What run.sh needs in addition on a machine without a display.
kVirtualDisplayPackages=(xvfb imagemagick)

# What bench.sh needs in addition to the first two.
kBenchPackages=(libbenchmark-dev python3)

# What the tests need in addition to all of the above. See also fuzzerRuntimePackage.
kTestPackages=(
    libgtest-dev clang xdotool openbox sway x11-utils python3
    appstream bash-completion desktop-file-utils mandoc
)

# What package.sh needs in addition to the first list.
kPackagingPackages=(dpkg-dev file python3)

# What checking the package needs, and what trying it in an empty system needs.
kPackageCheckPackages=(lintian devscripts)
kRootPackages=(mmdebstrap distro-info-data xdotool)

# What making the cheat sheet's PDF and the README's moving picture anew needs; nothing else does.
kPagePackages=(python3 weasyprint python3-pil fonts-liberation)

isInstalled() {
    command -v dpkg-query >/dev/null &&
        [[ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>&1)" == installed ]]
}

# Runs apt-get as root. Sets DEBIAN_FRONTEND after sudo, which would drop it.
aptGet() {
    local asRoot=()
    if ((EUID != 0)); then asRoot=(sudo); fi
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq -o DPkg::Lock::Timeout=120 "$@"
}

# installMissing PACKAGE...: installs those that are not there yet and says which.
installMissing() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "No apt-get here: make sure that the equivalents of these are installed: $*"
        return
    fi
    local package missing=()
    for package in "$@"; do
        if ! isInstalled "$package"; then missing+=("$package"); fi
    done
    if ((${#missing[@]} == 0)); then return; fi
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        echo "These packages are missing, and installing them takes root or sudo. As root, run:" >&2
        echo "    apt-get install --no-install-recommends ${missing[*]}" >&2
        return 1
    fi
    echo "Installing: ${missing[*]}"
    # An index that could be refreshed only in part is often good enough; apt-get has said what
    # failed.
    aptGet update || true
    quietly "installing packages" aptGet install -y --no-install-recommends "${missing[@]}"
}

# Prints the package that holds the fuzzer and sanitizer runtime of the installed clang. Its name
# carries clang's version. Prints nothing where the release has no such package: there the runtime
# comes with clang itself.
fuzzerRuntimePackage() {
    local version package
    version="$(clang -dumpversion)"
    package="libclang-rt-${version%%.*}-dev"
    if isInstalled "$package" || [[ -n "$(apt-cache show "$package" 2>/dev/null)" ]]; then
        echo "$package"
    fi
}
