#!/usr/bin/env bash
# Installs the Debian packages Kelpwick needs to build, test and run, when missing.
# With --bench, also the peers the benchmarks measure against (bench/run.sh):
# libmypaint, OpenCV's core and imgproc (cv::merge, the filters) and libvips (perlin noise); the tests never need them.
set -euo pipefail
PACKAGES=(cmake ninja-build g++ ccache qt6-base-dev libgtest-dev libgmock-dev libbenchmark-dev
          xvfb xauth x11-utils xdotool imagemagick python3 python3-pil
          desktop-file-utils appstream dpkg-dev dbus python3-dbus libxcb1-dev)
if [[ "${1:-}" == "--bench" ]]; then
  PACKAGES+=(libmypaint-dev libopencv-core-dev libopencv-imgproc-dev libvips-dev)
fi
missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  SUDO=""
  if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update -qq || true
  $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
