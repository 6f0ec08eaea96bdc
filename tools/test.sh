#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test headless.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
bash "$root/tools/install-deps.sh"
bash "$root/tools/build.sh"
export QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy
ctest --test-dir "${SORVEL_BUILD_DIR:-$root/build}" --output-on-failure --parallel "$(nproc)" "$@"
