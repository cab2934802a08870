#!/usr/bin/env bash
# Runs a command beside a throwaway PostgreSQL cluster on loopback (UTF8,
# C collation) and stops the cluster whatever happens. The command finds the
# server in TARVIN_TEST_PG_URL.
set -euo pipefail
BIN=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n1)
[ -x "$BIN/initdb" ] || { echo "PostgreSQL server binaries not found (install postgresql)"; exit 1; }
DIR=$(mktemp -d /tmp/tarvin-pg.XXXXXX)
PORT=${TARVIN_PG_PORT:-$(( 20000 + RANDOM % 20000 ))}
as_pg() {
  if [ "$(id -u)" -eq 0 ]; then runuser -u postgres -- "$@"; else "$@"; fi
}
[ "$(id -u)" -eq 0 ] && chown postgres "$DIR"
stop() {
  as_pg "$BIN/pg_ctl" -D "$DIR/data" -m immediate stop >/dev/null 2>&1 || true
  rm -rf "$DIR"
}
trap stop EXIT INT TERM
as_pg "$BIN/initdb" -D "$DIR/data" -E UTF8 --locale=C -A trust -U postgres >"$DIR/initdb.log" 2>&1 \
  || { cat "$DIR/initdb.log"; exit 1; }
as_pg "$BIN/pg_ctl" -D "$DIR/data" -l "$DIR/data/server.log" -w \
  -o "-p $PORT -k $DIR -c listen_addresses=127.0.0.1 -c fsync=off -c synchronous_commit=off -c full_page_writes=off -c max_connections=200" \
  start >/dev/null
export TARVIN_TEST_PG_URL="postgresql://postgres@127.0.0.1:$PORT/postgres"
export TARVIN_REQUIRE_PG=1
echo "PostgreSQL test cluster on 127.0.0.1:$PORT"
set +e
"$@"
rc=$?
set -e
exit $rc
