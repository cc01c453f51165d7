#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh"
export QT_QPA_PLATFORM=offscreen
# Tests write only into their own temporary folders, never the real home.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export TMPDIR="$scratch" HOME="$scratch/home" XDG_CONFIG_HOME="$scratch/config"
mkdir -p "$HOME" "$XDG_CONFIG_HOME"
cd "$root/build"
ctest --output-on-failure -j"$(nproc)" "$@"
