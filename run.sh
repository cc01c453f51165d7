#!/usr/bin/env bash
# Installs what is missing, builds, and starts the editor with the given files.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" >/dev/null
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
  echo "zorfa-editor: no display (neither DISPLAY nor WAYLAND_DISPLAY is set); run it in a desktop session or under xvfb-run." >&2
  exit 1
fi
exec "$root/build/bin/zorfa-editor" "$@"
