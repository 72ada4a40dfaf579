#!/usr/bin/env bash
# Builds a Debian package of the engine, the tools and the games. See --help.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source tools/shell.sh
source tools/packages.sh

kFolder=build-package

showHelp() {
    cat <<'HELP'
Usage: ./package.sh

Installs the packages that are missing, builds the engine and its tools as Debian builds programs,
and makes a package of them and the games: build-package/zel_VERSION_ARCHITECTURE.deb.

    --help    shows this text

./test.sh package looks at the package from all sides.
HELP
}

# Files of a package have the time of the newest version, so that it is the same whoever makes it.
timeOfVersion() {
    local day
    day="$(sed -nE 's/^## [0-9.]+ \((.*)\)$/\1/p' CHANGELOG.md | head -n 1)"
    date --utc --date "$day" +%s
}

# Compiles with the flags of Debian's own packages. Debug information would be stripped anyway, and
# the interpreter was measured without optimisation at link time.
useFlagsOfDebian() {
    local -x DEB_BUILD_MAINT_OPTIONS="hardening=+all optimize=-lto"
    local -x DEB_CXXFLAGS_MAINT_STRIP=-g
    CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
    CXXFLAGS+=" -D_GLIBCXX_ASSERTIONS"
    LDFLAGS="$(dpkg-buildflags --get LDFLAGS)"
    export CXXFLAGS LDFLAGS
}

buildPackage() {
    cmake -S . -B "$kFolder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
        -DZEL_PACKAGE=ON -DZEL_TESTS=OFF &&
        cmake --build "$kFolder" --target zel zelcheck zelplay man changelog &&
        (cd "$kFolder" && rm -f ./*.deb && cpack)
}

case "${1:-}" in
    "") ;;
    --help | -h)
        showHelp
        exit 0
        ;;
    *)
        echo "package.sh: unknown option: $1; see --help" >&2
        exit 2
        ;;
esac
installMissing "${kRunPackages[@]}" "${kPackagingPackages[@]}"
umask 022
SOURCE_DATE_EPOCH="$(timeOfVersion)"
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8
useFlagsOfDebian
echo "Building..."
quietly "building the package" buildPackage
package="$(echo "$kFolder"/*.deb)"
echo "Made $package ($(($(stat -c %s "$package") / 1024)) KiB). It needs:"
dpkg-deb --field "$package" Depends | fold -s -w 96 | sed 's/^/    /'
echo "To install it: sudo apt install ./$package"
