#!/usr/bin/env bash
# Installs what is missing, builds, and starts the editor on the bundled example
# project, or on what the arguments name (for example another project file).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
bash "$root/tools/install-deps.sh"
bash "$root/tools/build.sh"
if [ "$#" -eq 0 ] && [ -f "$root/examples/demo.svj2" ]; then set -- "$root/examples/demo.svj2"; fi
exec "${SORVEL_BUILD_DIR:-$root/build}/bin/sorvel2" "$@"
