#!/usr/bin/env bash
# A private PostgreSQL server for tests and measurements: in a folder of its own, on a free port of this machine alone.
# Usage: tools/postgres.sh start FILE    writes the server's address into FILE
#        tools/postgres.sh stop FILE     ends the server of that address and removes its folder and FILE
#        tools/postgres.sh restart FILE [fast|immediate]
#        JXC_PG_TLS=FOLDER makes a certificate for 0.0.0.0 there, with the root.crt that signed it, and the server encrypts
#        tools/postgres.sh run COMMAND…  with the address in JXC_TEST_ADDRESS
set -euo pipefail

# The server refuses to run as root.
as_owner() {
  if [ "$(id -u)" -ne 0 ]; then
    "$@"
  elif id postgres > /dev/null 2>&1; then
    runuser -u postgres -- "$@"
  else
    runuser -u nobody -- "$@"
  fi
}

programs() {
  if command -v pg_ctl > /dev/null; then
    dirname "$(readlink -f "$(command -v pg_ctl)")"
  else
    find /usr/lib/postgresql -maxdepth 2 -name bin | sort -V | tail -1
  fi
}

folder_of() {
  sed -n 's/^host=\([^ ]*\) .*/\1/p' "$1"
}

# A certificate for 0.0.0.0, which is this machine and yet none of its own names: what a server elsewhere is asked for can be tried
# on it.
certify() {
  local to=$1 of=$2
  openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj "/CN=shop root" -keyout "$to/root.key" -out "$to/root.crt"
  openssl req -newkey rsa:2048 -nodes -subj "/CN=shop" -keyout "$to/server.key" -out "$to/server.csr"
  openssl x509 -req -days 2 -in "$to/server.csr" -CA "$to/root.crt" -CAkey "$to/root.key" -CAcreateserial \
    -extfile <(echo "subjectAltName = IP:0.0.0.0") -out "$to/server.crt"
  cp "$to/server.key" "$to/server.crt" "$of"
  if [ "$(id -u)" -eq 0 ]; then chown --reference="$of" "$of"/server.*; fi
  chmod 600 "$of/server.key"
}

start() {
  local file=$1 bin folder port
  bin=$(programs)
  [ -n "$bin" ] || { echo "postgres.sh: PostgreSQL is not installed" >&2; exit 1; }
  [ ! -e "$file" ] || stop "$file"
  folder=$(mktemp -d "${TMPDIR:-/tmp}/jxc-pg.XXXXXX")
  chmod 711 "$folder"
  if [ "$(id -u)" -eq 0 ]; then chown "$(id postgres > /dev/null 2>&1 && echo postgres || echo nobody)" "$folder"; fi
  port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
  cd /
  as_owner "$bin/initdb" -D "$folder/data" -U jxc -A trust -E UTF8 --locale=C --no-sync \
    ${JXC_PG_CHECKSUMS---data-checksums} > "$folder.log" 2>&1 ||
    { cat "$folder.log" >&2; exit 1; }
  rm -f "$folder.log"
  # What a test writes need not survive a power cut.
  as_owner tee -a "$folder/data/postgresql.conf" > /dev/null << CONF
listen_addresses = '127.0.0.1'
port = $port
unix_socket_directories = '$folder'
fsync = ${JXC_PG_FSYNC:-off}
full_page_writes = ${JXC_PG_FSYNC:-off}
shared_buffers = 128MB
max_locks_per_transaction = 512
max_connections = 60
CONF
  if [ -n "${JXC_PG_TLS:-}" ]; then
    certify "$JXC_PG_TLS" "$folder/data" > "$folder.log" 2>&1 || { cat "$folder.log" >&2; exit 1; }
    rm -f "$folder.log"
    echo "ssl = on" | as_owner tee -a "$folder/data/postgresql.conf" > /dev/null
  fi
  as_owner "$bin/pg_ctl" -D "$folder/data" -l "$folder/data/log" -w -t 60 start > /dev/null ||
    { as_owner cat "$folder/data/log" >&2; exit 1; }
  echo "host=$folder port=$port user=jxc dbname=postgres" > "$file"
}

stop() {
  local folder
  folder=$(folder_of "$1")
  rm -f "$1"
  [ -d "$folder/data" ] || return 0
  (cd / && as_owner "$(programs)/pg_ctl" -D "$folder/data" -m immediate -w stop > /dev/null) || true
  rm -rf "$folder"
}

case ${1:-} in
  start) start "$(readlink -m "$2")" ;;
  stop) [ ! -e "$2" ] || stop "$(readlink -m "$2")" ;;
  restart)
    folder=$(folder_of "$2")
    cd /
    as_owner "$(programs)/pg_ctl" -D "$folder/data" -m "${3:-fast}" -l "$folder/data/log" -w restart > /dev/null
    ;;
  run)
    shift
    file=$(mktemp -u)
    trap 'stop "$file"' EXIT
    start "$file"
    JXC_TEST_ADDRESS=$(cat "$file") "$@"
    ;;
  *)
    sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$0"
    exit 2
    ;;
esac
