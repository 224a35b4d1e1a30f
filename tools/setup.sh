#!/usr/bin/env bash
# Installs what is missing of packaging/debian-packages.txt. Usage: tools/setup.sh SECTION…
# (runtime, build, test, package, fuzz). Costs a moment when everything is there.
set -euo pipefail
list="$(dirname "${BASH_SOURCE[0]}")/../packaging/debian-packages.txt"

wanted=()
while read -r section package _; do
  for asked in "$@"; do
    [ "$section" = "$asked" ] && wanted+=("$package")
  done
done <"$list"

if ! command -v dpkg-query >/dev/null 2>&1; then
  echo "setup: this is not a Debian machine; going on with what is installed (needed: ${wanted[*]})" >&2
  exit 0
fi

installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null || true)
missing=()
for package in "${wanted[@]}"; do
  grep -qx "installed $package" <<<"$installed" || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

# Whatever kept us from it: what helps is the same.
give_up() {
  echo "setup: $1 As root, run:" >&2
  echo "  apt-get update && apt-get install --no-install-recommends ${missing[*]}" >&2
  exit 1
}

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null 2>&1 || give_up "these packages are missing, and only root can install them."
  as_root=(sudo)
  [ -t 0 ] || as_root=(sudo -n) # nobody there who could type a password
  echo "setup: sudo, to install ${missing[*]}" >&2
  "${as_root[@]}" true || give_up "these packages are missing, and sudo does not let $(id -un) install them."
fi

echo "setup: installing ${missing[*]}" >&2
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3)
# The tests start a database server of their own. The one that its package sets up would run from each boot on.
no_cluster=/etc/postgresql-common/createcluster.d/none-for-tests.conf
case " ${missing[*]} " in
  *" postgresql "*)
    "${as_root[@]}" mkdir -p "${no_cluster%/*}"
    "${as_root[@]}" tee "$no_cluster" <<<"create_main_cluster = false" >/dev/null
    trap '"${as_root[@]}" rm -f "$no_cluster"' EXIT
    ;;
esac
# A source of something else that cannot be reached must not stop us: what we need may be there all the same.
"${apt[@]}" update </dev/null >&2 || echo "setup: some package lists could not be refreshed" >&2
"${apt[@]}" install -y --no-install-recommends "${missing[@]}" </dev/null >&2 ||
  give_up "these packages could not be installed; the reason stands above. Without any list of packages this machine needs the network first."
