#!/usr/bin/env bash
# Installs what building, testing and trying out scopeview needs on Debian, as far as it is missing.
# Says nothing when all is there.
set -euo pipefail

packages=(
  g++ cmake ninja-build ccache python3
  zlib1g-dev libbz2-dev libpng-dev libx11-dev libxml2-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  clang clang-tidy clang-format libclang-rt-14-dev
  ghostscript xvfb xdotool giflib-tools libgif-dev pngcheck mandoc
)

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [[ $status == installed ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

root=()
if [[ $(id -u) -ne 0 ]]; then
  if ! command -v sudo >/dev/null; then
    echo "setup: please install as root: ${missing[*]}" >&2
    exit 1
  fi
  root=(sudo)
fi

echo "setup: installing ${missing[*]}"
install=("${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends
  -o Dpkg::Use-Pty=0 install "${missing[@]}")
# The package lists at hand are often good enough; they are fetched again when they are not.
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! "${install[@]}" >"$log" 2>&1; then
  if ! { "${root[@]}" apt-get -qq update && "${install[@]}"; } >"$log" 2>&1; then
    cat "$log" >&2
    echo "setup: could not install ${missing[*]}" >&2
    exit 1
  fi
fi
echo "setup: done"
