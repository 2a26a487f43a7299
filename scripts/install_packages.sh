#!/usr/bin/env bash
# install_packages.sh GROUP...: installs what a group needs and the machine misses (Debian 12).
set -euo pipefail

packages=()
for group; do
    case $group in
        build) packages+=(g++ cmake ninja-build libgtest-dev libcli11-dev nlohmann-json3-dev
            libpng-dev python3) ;;  # python3: the code shown in the guides is a test
        check) packages+=(clang clang-tidy clang-format libclang-rt-dev libbenchmark-dev
            python3 pkgconf binutils util-linux valgrind) ;;
        bench) packages+=(libbenchmark-dev) ;;
        peers) packages+=(libbenchmark-dev python3 pkgconf libgeos++-dev libcgal-dev libopencv-core-dev
            libopencv-imgproc-dev libpolyclipping-dev libnanoflann-dev) ;;
        docs) packages+=(doxygen python3) ;;
        *) echo "install_packages.sh: there is no group '$group'" >&2; exit 2 ;;
    esac
done

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $status == *installed* && $status != *not-installed* ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit

if [[ $(id -u) -ne 0 ]]; then
    echo "Missing packages, to be installed as root: apt-get install ${missing[*]}" >&2
    exit 1
fi
echo "Installing ${missing[*]}" >&2
export DEBIAN_FRONTEND=noninteractive
install=(apt-get install -y -qq --no-install-recommends "${missing[@]}")
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# The package lists may be absent or old: fetch them where the first attempt fails.
if ! "${install[@]}" >"$log" 2>&1 &&
    ! { apt-get update -qq && "${install[@]}"; } >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
