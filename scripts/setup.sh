#!/usr/bin/env bash
# Installs what Tavrix needs to build and run on Debian 12, then configures and
# builds it in ./build. Safe to run again: it installs only what is missing.
# Options: --with-display also installs a virtual display (Xvfb);
# --with-packaging the tools that build and check the Debian package;
# --with-test-server a PostgreSQL server for the tests' throw-away cluster;
# --no-build stops after installing.
set -euo pipefail
cd "$(dirname "$0")/.."

# Qt Charts finds itself only with Qt OpenGL's CMake files, which Debian 12
# keeps in libqt6opengl6-dev and qt6-charts-dev does not pull in.
packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6sql6-psql qt6-multimedia-dev qt6-charts-dev libqt6opengl6-dev
  libgl1-mesa-dev sqlite3 libsqlite3-dev libfftw3-dev
)
build=yes
for option in "$@"; do
  case "$option" in
    # Only for starting the program without a display.
    --with-display) packages+=(xvfb xauth) ;;
    # dpkg-shlibdeps (dpkg-dev) and file find the package's dependencies; the
    # rest check the package and the installed program.
    --with-packaging) packages+=(dpkg-dev file lintian desktop-file-utils appstream) ;;
    --with-test-server) packages+=(postgresql) ;;
    --no-build) build=no ;;
    *) echo "setup.sh: unknown option $option" >&2; exit 2 ;;
  esac
done

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" \
    || missing+=("$package")
done
if [ "${#missing[@]}" -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=()
  [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends \
    "${missing[@]}"
fi

[ "$build" = yes ] || exit 0
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build --parallel "$(nproc)"
