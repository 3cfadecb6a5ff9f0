#!/usr/bin/env bash
# Installs the Debian packages that Vistrel needs to build, run and test.
# Idempotent: when everything is there it only checks, which takes a moment.
set -euo pipefail

PACKAGES=(
  build-essential cmake ninja-build pkg-config ccache python3
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev libqt6svg6 qt6-image-formats-plugins
  libgl-dev libxkbcommon-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libsqlcipher-dev sqlcipher
  libcdio-dev libcddb2-dev
  libwmf-dev libemf2svg-dev fonts-urw-base35
  libxcb1-dev libxcb-ewmh-dev
  libglib2.0-dev shared-mime-info xdg-utils
  libpulse-dev pulseaudio pulseaudio-utils pavucontrol
  libvips-tools imagemagick
  xvfb xauth openbox xdotool
  gifsicle sox libjpeg-turbo-progs
  libmpv-dev libfluidsynth-dev timgm6mb-soundfont ffmpeg id3v2 eyed3
  libespeak-ng-dev espeak-ng-data desktop-file-utils qt6-wayland
  dpkg-dev file appstream
  at-spi2-core python3-pyatspi dbus-daemon
  clang-14 libclang-rt-14-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  SUDO=""
  if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update -qq
  $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
