#!/usr/bin/env bash
# Installs the Debian packages that are missing; silent when there are none.
#   install_packages.sh build    what building and running needs
#   install_packages.sh test     what ./test.sh needs besides
#   install_packages.sh page     what the checks of the report's page need: Node, unless another one is there
#   install_packages.sh browser  the browsers that its tests drive
set -euo pipefail

packages=(g++ cmake ninja-build ccache nlohmann-json3-dev libcli11-dev libgtest-dev
    libzip-dev libpugixml-dev libsqlite3-dev)
case ${1:-build} in
    test)
        packages+=(clang libclang-rt-14-dev llvm clang-format clang-tidy g++-mingw-w64-x86-64-posix googletest wine wine64
            libbenchmark-dev pkg-config dpkg-dev file zsh fish python3-jsonschema doxygen)
        ;;
    page)
        packages=()
        command -v npm >/dev/null || packages=(nodejs npm)
        ;;
    browser) packages=(chromium firefox-esr) ;;
esac

# Without apt the machine's owner brings the tools along; configuring names what is missing.
command -v apt-get >/dev/null || exit 0

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null || true)
    grep -qx installed <<<"$status" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
echo "Installing ${missing[*]}" >&2
{
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
} >&2
