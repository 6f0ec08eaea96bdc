#!/usr/bin/env bash
# Installs the Debian packages the project needs, only those that are missing.
# Exits non-zero with a clear message when something cannot be installed.
set -euo pipefail

PACKAGES=(
  # build
  cmake ninja-build g++ pkg-config ccache
  # libraries
  qt6-base-dev qt6-svg-dev qt6-image-formats-plugins libsdl2-dev
  libegl-dev libgl-dev libegl-mesa0 libgl1-mesa-dri glslang-dev
  libspirv-cross-c-shared-dev libavformat-dev libavcodec-dev libswscale-dev
  libswresample-dev libavutil-dev libluajit-5.1-2 liblua5.1-0
  # tests and benchmarks
  libgtest-dev libgmock-dev libbenchmark-dev xvfb xauth
  # end-to-end window tests: input and screenshots under Xvfb
  xdotool imagemagick
  # the export benchmark times FFmpeg's filter graph beside the program's own export
  ffmpeg bc
  # fonts: the user interface speaks Japanese
  fonts-noto-cjk fonts-dejavu-core
  # numbers in files must not follow the process locale: tests build a comma locale
  locales
)

missing=()
for package in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: all ${#PACKAGES[@]} packages are present"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  if command -v sudo >/dev/null 2>&1; then
    SUDO="sudo"
  else
    echo "install-deps: need root (or sudo) to install: ${missing[*]}" >&2
    exit 1
  fi
fi

export DEBIAN_FRONTEND=noninteractive
if ! $SUDO apt-get update -q; then
  echo "install-deps: 'apt-get update' failed; is the package registry reachable?" >&2
  exit 1
fi
if ! $SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"; then
  echo "install-deps: could not install: ${missing[*]}" >&2
  exit 1
fi
echo "install-deps: done"
