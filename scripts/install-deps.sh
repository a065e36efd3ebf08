#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing Marnoquill need.
# Does nothing when all of them are present, so `make test` stays quick on a set-up machine.
set -euo pipefail

packages=(
  build-essential cmake pkg-config
  qt6-base-dev libgl-dev
  libtiff-dev libsqlite3-dev liblhasa-dev
  libqt6svg6 qt6-translations-l10n
  libgtest-dev libgmock-dev libbenchmark-dev
  fonts-noto-cjk fonts-ipafont
  libtesseract-dev tesseract-ocr-jpn tesseract-ocr-jpn-vert tesseract-ocr-eng tesseract-ocr-osd
  dbus-daemon dbus-bin
  xdg-utils desktop-file-utils shared-mime-info
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -q
$sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
