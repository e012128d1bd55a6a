#!/usr/bin/env bash
# with_postgresql.sh COMMAND...: runs the command with PGHOST, PGPORT, PGUSER and PGDATABASE set to a
# PostgreSQL server of its own, on loopback and a free port, with its data in a temporary directory.
# The server runs as "nobody" where this runs as root.
set -euo pipefail
programs=$(ls -d /usr/lib/postgresql/*/bin | tail -1)
data=$(mktemp -d)
as=()
if [ "$(id -u)" = 0 ]; then
  as=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
  chown nobody: "$data"
fi
stop() {
  "${as[@]}" "$programs/pg_ctl" stop -D "$data" -m immediate -s || true
  rm -rf "$data"
}
trap stop EXIT
cd "$data" # the server must be allowed to enter where it is started
"${as[@]}" "$programs/initdb" -D "$data" -A trust -U store -E UTF8 --locale=C.UTF-8 --no-sync >/dev/null
port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
"${as[@]}" "$programs/pg_ctl" start -D "$data" -w -s -l "$data/log" \
  -o "-p $port -c listen_addresses=127.0.0.1 -c unix_socket_directories=" || { cat "$data/log" >&2; exit 1; }
cd "$OLDPWD"
PGHOST=127.0.0.1 PGPORT=$port PGUSER=store PGDATABASE=postgres "$@"
