#!/usr/bin/env bash
# Installs the Debian packages Quill needs to build, test, fuzz and benchmark.
# Only packages that are missing are installed; nothing is asked interactively.
set -euo pipefail

packages=(
  cmake ninja-build g++ clang libclang-rt-14-dev
  libicu-dev libgtest-dev libgmock-dev libbenchmark-dev
  zlib1g-dev liblz4-dev libsqlite3-dev libcli11-dev
  gettext pkg-config libchm-dev time
  qt6-base-dev qt6-qpa-plugins fonts-dejavu-core xvfb xauth
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: all packages present"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
