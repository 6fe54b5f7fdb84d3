#!/usr/bin/env bash
# Installs the Debian packages that building and testing Tavlorin need, when they are missing.
# Run as root (or it prints the exact command for root to run). Quiet when nothing is missing.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config ccache
  libsqlite3-dev libcurl4-openssl-dev libexpat1-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  python3 python3-pyftpdlib sqlite3
  libhamlib-utils
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

cmd="apt-get update && DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends ${missing[*]}"
if [ "$(id -u)" -ne 0 ]; then
  if command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
    sudo sh -c "$cmd"
    exit 0
  fi
  echo "These Debian packages are missing: ${missing[*]}" >&2
  echo "Install them as root with:" >&2
  echo "  $cmd" >&2
  exit 1
fi
echo "Installing: ${missing[*]}" >&2
sh -c "$cmd" >&2
