#!/usr/bin/env bash
# Installs what is missing, builds, and starts the editor. Arguments go to the editor
# (for example a project file to open).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
bash "$root/tools/install-deps.sh"
bash "$root/tools/build.sh"
exec "${SORVEL_BUILD_DIR:-$root/build}/bin/sorvel2" "$@"
