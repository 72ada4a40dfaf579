#!/usr/bin/env bash
# Builds the package and looks at it from all sides: twice the same, lintian, hardening, and a
# system with nothing else in it. A stage of test.sh.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source tools/shell.sh
source tools/packages.sh
source tools/root.sh

gCopy="" # the folder of the second build

fail() {
    echo "tests/package/check.sh: $1" >&2
    exit 1
}

tidyUp() {
    if [[ -n "$gCopy" ]]; then rm -rf "$gCopy"; fi
    removeRoots
}

# The same files in a folder with another name make the same package.
checkSecondBuild() {
    local copy
    gCopy="$(mktemp -d)"
    copy="$gCopy/another name"
    mkdir "$copy"
    git ls-files -z | tar --create --null --files-from=- | tar --extract --directory "$copy"
    "$copy/package.sh"
    cmp "$gPackage" "$copy/$gPackage" || fail "a second build differs"
}

# Root may build packages, as long as these are not looked at by a program that can be fooled.
checkLint() {
    lintian --allow-root --fail-on error,warning "$gPackage" || fail "lintian is not content"
}

# All that Debian asks of a program: position independent, protected stack, fortified functions,
# relocations read-only and bound at the start.
checkHardening() {
    local programs
    programs="$(mktemp -d)"
    dpkg-deb --extract "$gPackage" "$programs"
    # Control flow protection takes start-up objects that have it: Debian 12 has none.
    (cd "$programs"/usr/bin && hardening-check --nocfprotection zel zelcheck zelplay) ||
        fail "a program is not hardened"
    rm -rf "$programs"
}

# Where an empty system can be made, which takes root; otherwise this is left out, and said.
checkFreshSystem() {
    local root suite
    if ((EUID != 0)); then
        echo "Not root: the package was not tried in an empty system"
        return
    fi
    installMissing "${kRootPackages[@]}" "${kVirtualDisplayPackages[@]}"
    suite="$(. /etc/os-release && echo "$VERSION_CODENAME")"
    makeRoot "$suite" root
    tests/package/fresh_system.sh "$root" "$gPackage"
}

trap tidyUp EXIT
installMissing "${kPackageCheckPackages[@]}"
./package.sh
gPackage="$(echo build-package/*.deb)"
checkLint
checkHardening
checkSecondBuild
checkFreshSystem
