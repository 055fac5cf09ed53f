#!/usr/bin/env bash
# Builds the Debian package of Tavrix in ./build-package (Release, without
# tests or benchmarks), checks it with lintian, installs it with apt-get,
# validates the installed menu entry and AppStream metadata, starts the
# installed program offscreen in a temporary home, and removes the package
# again. With --keep the package stays installed.
set -euo pipefail
cd "$(dirname "$0")/.."

keep=no
for option in "$@"; do
  case "$option" in
    --keep) keep=yes ;;
    *) echo "package.sh: unknown option $option" >&2; exit 2 ;;
  esac
done

sudo_cmd=()
[ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
bash scripts/setup.sh --no-build --with-packaging

echo "== Building the package"
rm -f build-package/tavrix_*.deb
# Debian's hardening flags (stack protector, fortified calls, read-only
# relocations bound at start).
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
cmake -S . -B build-package -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DTAVRIX_BUILD_TESTS=OFF -DTAVRIX_BUILD_BENCH=OFF -DTAVRIX_BUILD_FUZZ=OFF \
  -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)"
cmake --build build-package --parallel "$(nproc)"
(cd build-package && cpack -G DEB)
debs=(build-package/tavrix_*.deb)
deb="$PWD/${debs[0]}"
echo "Package: $deb ($(du -k "$deb" | cut -f1) KiB)"
dpkg-deb --field "$deb" Package Version Section Depends

echo "== lintian"
lintian --fail-on error --tag-display-limit 0 "$deb"

echo "== Installing"
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq "$deb"
work="$(mktemp -d)"
remove_package() {
  rm -rf "$work"
  if [ "$keep" = no ]; then
    echo "== Removing the package"
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get remove -y -qq --purge tavrix
  fi
}
trap remove_package EXIT

fail() { echo "package.sh: $*" >&2; exit 1; }

# The one program (in /usr/games, where Debian keeps games): no test or
# helper programs.
programs="$(dpkg -L tavrix | grep -E '^/usr/(s?bin|games|libexec)/.' || true)"
[ "$programs" = /usr/games/tavrix ] || fail "unexpected programs: $programs"
tavrix=/usr/games/tavrix
desktop-file-validate /usr/share/applications/tavrix.desktop
# The menu starts the program with --from-menu, which puts the database in the
# user's data folder.
grep -qx 'Exec=tavrix --from-menu' /usr/share/applications/tavrix.desktop \
  || fail "the menu entry does not start tavrix --from-menu"
appstreamcli validate --no-net "$(dpkg -L tavrix | grep '^/usr/share/metainfo/.*\.xml$')"
for icon in /usr/share/icons/hicolor/scalable/apps/tavrix.svg /usr/share/icons/hicolor/256x256/apps/tavrix.png; do
  [ -s "$icon" ] || fail "missing icon $icon"
done

echo "== The installed program"
version="$("$tavrix" --version)"
echo "$version"
[[ "$version" =~ ^Tavrix\ [0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "unexpected version text"

# A private home, no TAVRIX_DB: started from the menu the database goes to the
# user's data folder.
run() {
  exec env -u TAVRIX_DB -u XDG_DATA_HOME -u XDG_CONFIG_HOME HOME="$work/home" \
    XDG_RUNTIME_DIR="$work/runtime" QT_QPA_PLATFORM=offscreen "$@"
}
mkdir -p "$work/home" "$work/runtime" "$work/terminal"
chmod 700 "$work/runtime"
paths_status=0
paths="$(run "$tavrix" --from-menu --paths)" || paths_status=$?
echo "$paths"
grep -qx 'Sounds:   /usr/share/tavrix/sounds' <<<"$paths" || fail "the sounds were not found"
grep -qx "Database: $work/home/.local/share/tavrix/tavrix.db" <<<"$paths" \
  || fail "from the menu the database is not in the user's data folder"
if [ -d help ]; then
  grep -qx 'Help:     /usr/share/tavrix/help' <<<"$paths" || fail "the help pages were not found"
  [ "$paths_status" -eq 0 ] || fail "--paths exited with $paths_status"
else
  echo "(no help pages in this source tree: --paths exits with $paths_status)"
  [ "$paths_status" -ne 0 ] || fail "--paths found help pages that were never installed"
fi

# Starts the installed program with its arguments, waits until the database
# has its players table (on an empty database the program then waits in the
# first-player dialog), and stops it. Qt's complaints about missing plugins
# or drivers fail the check.
start_and_stop() {
  local database="$1" folder="$2"
  shift 2
  # The subshell becomes the program (exec), so $! is the program itself.
  (cd "$folder" && run "$@") >"$work/out.txt" 2>&1 &
  local pid=$! found=no
  for _ in $(seq 60); do
    if [ -f "$database" ] \
        && [ "$(sqlite3 "$database" "select name from sqlite_master where name = 'players'" 2>/dev/null)" = players ]; then
      found=yes
      break
    fi
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.5
  done
  local alive=no
  kill -0 "$pid" 2>/dev/null && alive=yes
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
  cat "$work/out.txt"
  [ "$found" = yes ] || fail "no players table in $database"
  [ "$alive" = yes ] || fail "the program stopped by itself"
  if grep -Ei 'could not load|cannot load|not loaded|no .*backends found|plugin .*not found' "$work/out.txt"; then
    fail "the program misses a plugin or driver"
  fi
  echo "Database made: $database"
}
start_and_stop "$work/home/.local/share/tavrix/tavrix.db" "$work/terminal" "$tavrix" --from-menu
[ ! -e "$work/terminal/tavrix.db" ] || fail "started from the menu, the program wrote to its working folder"
start_and_stop "$work/chosen.db" "$work/terminal" env TAVRIX_DB="$work/chosen.db" "$tavrix"
start_and_stop "$work/terminal/tavrix.db" "$work/terminal" "$tavrix"
echo "== The package works"
