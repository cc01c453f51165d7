#!/usr/bin/env bash
# Installs the Debian 12 packages the build and the tests need, and nothing
# when they are all present already (so it costs a fraction of a second).
set -euo pipefail
packages=(g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-svg-dev
  libqt6sql6-sqlite libqt6sql6-psql libqt6sql6-odbc libjpeg62-turbo-dev
  libgtest-dev libgmock-dev libbenchmark-dev postgresql xvfb xauth)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then SUDO=sudo; else SUDO=; fi
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update -qq
  $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
