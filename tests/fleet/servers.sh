# Real servers on loopback, with temporary directories and free ports; to be sourced. They are
# stopped by their own process ids. $work is a directory that goes at the end.

free_ports() { # COUNT
  python3 - "$1" <<'EOF'
import socket, sys
sockets = [socket.socket() for _ in range(int(sys.argv[1]))]
for one in sockets:
    one.bind(("127.0.0.1", 0))
print(*(one.getsockname()[1] for one in sockets))
EOF
}

wait_until() { # SECONDS COMMAND...
  local end=$((SECONDS + $1))
  shift
  until "$@" >/dev/null 2>&1; do
    [ "$SECONDS" -lt "$end" ] || { echo "fleet: waited too long for: $*" >&2; return 1; }
    sleep 0.3
  done
}

start_nats() { # three nodes that know each other: $servers, ${nats_pid[1..3]}
  read -ra nats_ports <<<"$(free_ports 6)"
  servers=nats://127.0.0.1:${nats_ports[0]},nats://127.0.0.1:${nats_ports[1]},nats://127.0.0.1:${nats_ports[2]}
  nats_routes=nats://127.0.0.1:${nats_ports[3]},nats://127.0.0.1:${nats_ports[4]},nats://127.0.0.1:${nats_ports[5]}
  local node
  for node in 1 2 3; do start_node "$node"; done
}

start_node() { # 1..3
  nats-server --name "node-$1" --addr 127.0.0.1 --port "${nats_ports[$1 - 1]}" --jetstream \
    --store_dir "$work/nats-$1" --cluster_name fleet --routes "$nats_routes" \
    --cluster "nats://127.0.0.1:${nats_ports[$1 + 2]}" --log "$work/nats-$1.log" &
  nats_pid[$1]=$!
}

kill_node() { # 1..3
  kill -9 "${nats_pid[$1]}"
  wait "${nats_pid[$1]}" 2>/dev/null || true
}

# A server of PostgreSQL does not run as root.
as_postgres() {
  if [ "$(id -u)" = 0 ]; then setpriv --reuid postgres --regid postgres --clear-groups "$@"; else "$@"; fi
}

start_postgres() { # $database
  pg_bin=$(ls -d /usr/lib/postgresql/*/bin | sort -V | tail -1)
  pg_port=$(free_ports 1)
  mkdir "$work/postgres"
  [ "$(id -u)" != 0 ] || chown postgres "$work/postgres"
  as_postgres "$pg_bin/initdb" -D "$work/postgres/data" -U fleet -A trust -E UTF8 --no-locale >"$work/initdb.log"
  pg_options="-c listen_addresses=127.0.0.1 -c port=$pg_port -c unix_socket_directories= -c max_wal_size=4GB"
  postgres_now start
  database=postgresql://fleet@127.0.0.1:$pg_port/postgres
}

postgres_now() { # start, restart, stop
  as_postgres "$pg_bin/pg_ctl" -D "$work/postgres/data" -w -m immediate -o "$pg_options" \
    -l "$work/postgres/log" "$1" >/dev/null
}

ask() { # SQL
  "$pg_bin/psql" -XAtq "$database" -c "$1"
}

stop_servers() {
  local node
  for node in "${!nats_pid[@]}"; do kill -9 "${nats_pid[$node]}" 2>/dev/null || true; done
  [ ! -f "$work/postgres/data/postmaster.pid" ] || postgres_now stop || true
}
