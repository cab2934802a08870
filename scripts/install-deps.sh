#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the demo need.
# As root it runs apt-get; otherwise it prints the line to run and fails.
set -euo pipefail
PKGS=(cmake ninja-build g++ make pkg-config googletest libgtest-dev
      qt6-base-dev libqt6sql6-sqlite libqt6sql6-psql qt6-qpa-plugins libgl-dev
      libsqlite3-dev sqlite3 libsodium-dev postgresql postgresql-client
      fonts-noto-cjk poppler-utils)
missing=()
for p in "${PKGS[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
if [ "$(id -u)" -eq 0 ]; then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
else
  echo "Missing packages. Run as root:"
  echo "  apt-get update && apt-get install -y ${missing[*]}"
  exit 1
fi
