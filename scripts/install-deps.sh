#!/usr/bin/env bash
# Installs the Debian packages the build and the program need, once; safe to run again.
set -euo pipefail
packages=(cmake g++ make qt6-base-dev qt6-base-dev-tools qt6-charts-dev libqt6charts6 libqt6printsupport6
          libgl-dev libsqlite3-dev libgtest-dev libnova-dev liberfa-dev fonts-noto-cjk xvfb xauth ccache
          dpkg-dev file binutils)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}"
