#!/usr/bin/env bash
# A throw-away PostgreSQL server for the tests: a new cluster in a temporary
# folder, run by an unprivileged user on a free local port, with one
# database, reached without a password from this computer only.
#   bash scripts/pg_test_cluster.sh start   prints shell lines that export
#       TAVRIX_TEST_PG (the server's URI) and TAVRIX_TEST_PG_DIR;
#   bash scripts/pg_test_cluster.sh stop DIR   stops it and removes DIR;
#   bash scripts/pg_test_cluster.sh start-with-password PASSWORD   the same,
#       but the server asks for the password (scram-sha-256);
#   bash scripts/pg_test_cluster.sh halt DIR / resume DIR   stops it for a
#       while and starts it again on the same port, as a server that goes
#       away in the middle of a game.
set -euo pipefail

bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
[ -x "$bin/initdb" ] || { echo "pg_test_cluster.sh: PostgreSQL's server is not installed" >&2; exit 1; }

# The server refuses to run as root: it runs as nobody then.
as_owner=()
[ "$(id -u)" -eq 0 ] && as_owner=(runuser -u nobody --)

case "${1:-}" in
start|start-with-password)
  auth=(--auth=trust)
  dir=$(mktemp -d /tmp/tavrix-pg.XXXXXX)
  chmod 755 "$dir"
  [ "${#as_owner[@]}" -gt 0 ] && chown nobody:nogroup "$dir"
  # A port nothing answers on.
  port=
  for candidate in $(shuf -i 20000-60000 -n 50); do
    if ! (exec 3<>"/dev/tcp/127.0.0.1/$candidate") 2>/dev/null; then port=$candidate; break; fi
  done
  [ -n "$port" ] || { echo "pg_test_cluster.sh: no free port found" >&2; exit 1; }
  if [ "$1" = start-with-password ]; then
    printf '%s\n' "${2:?start-with-password needs the password}" >"$dir/password"
    [ "${#as_owner[@]}" -gt 0 ] && chown nobody:nogroup "$dir/password"
    auth=(--auth=scram-sha-256 --pwfile="$dir/password")
  fi
  "${as_owner[@]}" "$bin/initdb" -D "$dir/data" -U tavrix "${auth[@]}" -E UTF8 --no-instructions >"$dir/initdb.log" 2>&1 \
    || { cat "$dir/initdb.log" >&2; exit 1; }
  echo "$port" >"$dir/port"
  "${as_owner[@]}" "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w \
    -o "-p $port -k $dir -c listen_addresses=127.0.0.1 -c fsync=off" start >/dev/null \
    || { cat "$dir/server.log" >&2; exit 1; }
  PGPASSWORD="${2:-}" "${as_owner[@]}" "$bin/createdb" -h 127.0.0.1 -p "$port" -U tavrix tavrix_test
  echo "export TAVRIX_TEST_PG='postgresql://tavrix@127.0.0.1:$port/tavrix_test?sslmode=disable'"
  echo "export TAVRIX_TEST_PG_DIR='$dir'"
  ;;
stop)
  dir=${2:?pg_test_cluster.sh stop needs the folder}
  [ -d "$dir/data" ] && "${as_owner[@]}" "$bin/pg_ctl" -D "$dir/data" -m fast -w stop >/dev/null || true
  rm -rf "$dir"
  ;;
halt)
  dir=${2:?pg_test_cluster.sh halt needs the folder}
  "${as_owner[@]}" "$bin/pg_ctl" -D "$dir/data" -m fast -w stop >/dev/null
  ;;
resume)
  dir=${2:?pg_test_cluster.sh resume needs the folder}
  port=$(cat "$dir/port")
  "${as_owner[@]}" "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w \
    -o "-p $port -k $dir -c listen_addresses=127.0.0.1 -c fsync=off" start >/dev/null \
    || { cat "$dir/server.log" >&2; exit 1; }
  ;;
*)
  echo "usage: pg_test_cluster.sh start | stop DIR | halt DIR | resume DIR" >&2
  exit 2
  ;;
esac
