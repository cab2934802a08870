#!/usr/bin/env bash
# Screening and alarm benchmarks at a utility's scale: a demo utility of
# 1,000,000 customers on SQLite (kept in $TARVIN_BENCH_DIR and reused; about
# 12 minutes to write, 8 GB) and one of 200,000 customers on a throwaway
# PostgreSQL cluster (about 5 minutes to write). Prints the tables
# docs/performance.md quotes.
#
#   scripts/bench-scale.sh [sqlite] [postgresql]     (both by default)
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
BIN=${BUILD:-$ROOT/build}/bin
DIR=${TARVIN_BENCH_DIR:-$HOME/.cache/tarvin-bench}
ENGINES=${*:-sqlite postgresql}
mkdir -p "$DIR"

for engine in $ENGINES; do
  case $engine in
    sqlite)
      DB="$DIR/demo1m.sqlite"
      if [ ! -s "$DB" ]; then
        "$BIN/tarvin-demo-db" --db "sqlite:$DB.part" --customers 1000000 && mv "$DB.part" "$DB"
      fi
      "$BIN/bench_screening" --db "sqlite:$DB"
      "$BIN/bench_alarm_scan" --db "sqlite:$DB"
      ;;
    postgresql)
      "$ROOT/scripts/with-pg.sh" bash -c '
        set -e
        "$0/tarvin-demo-db" --db "$TARVIN_TEST_PG_URL" --customers 200000
        "$0/bench_screening" --db "$TARVIN_TEST_PG_URL"
        "$0/bench_alarm_scan" --db "$TARVIN_TEST_PG_URL"' "$BIN"
      ;;
    *) echo "unknown engine: $engine (sqlite, postgresql)" >&2; exit 2 ;;
  esac
done
