#!/usr/bin/env bash
# Configures and builds the project into build/ (or $SORVEL_BUILD_DIR).
# Warnings are errors here, as they are in CI.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${SORVEL_BUILD_DIR:-$root/build}"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DSORVEL_WARNINGS_AS_ERRORS=ON
cmake --build "$build" --parallel "$(nproc)"
