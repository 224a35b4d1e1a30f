#!/usr/bin/env bash
# Makes a Debian package of the program. Usage: tools/package.sh [--out DIR] [--preset PRESET]
#   --out DIR         the folder that it goes to (default: build/package)
#   --preset PRESET   of another build than what a shop runs (release)
# Its version ends with the time of the build: a later package is an update of an earlier one. The last line names it.
set -euo pipefail
export LC_ALL=C.UTF-8 # the names of some files are Chinese, and a machine may have no locale
top=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
. "$top/tools/checkout.sh"

words=("$@")
preset=release
out=$top/build/package
while [ $# -gt 0 ]; do
  case $1 in
    -h | --help)
      sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$top/tools/package.sh"
      exit 0
      ;;
    --out | --preset)
      [ $# -ge 2 ] || { echo "package.sh: $1 needs a word behind it" >&2; exit 2; }
      if [ "$1" = --out ]; then out=$(realpath -m "$2"); else preset=$2; fi
      shift 2
      ;;
    *)
      echo "package.sh: what is “$1”? See --help" >&2
      exit 2
      ;;
  esac
done

hand_to_owner "runtime build package" "$top/tools/package.sh" ${words[@]+"${words[@]}"}
"$top/tools/setup.sh" runtime build package
# cpack only mentions it when the tool is missing that finds the libraries, and makes a package that needs nothing.
command -v dpkg-shlibdeps >/dev/null || { echo "package.sh: dpkg-shlibdeps is missing (package dpkg-dev)" >&2; exit 1; }
(build "$preset" jxc jxcctl) >&2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
declared=$(sed -n 's/^project(jxc VERSION \([0-9.]*\).*/\1/p' "$top/CMakeLists.txt")
(cd "$top/build/$preset" && cpack -G DEB -B "$work" -D "CPACK_DEBIAN_PACKAGE_VERSION=$declared+$(date -u +%Y%m%d%H%M%S)") >&2
package=$(find "$work" -maxdepth 1 -name '*.deb')
for needed in libqt6widgets6 libsqlite3-0 libpq5; do
  grep -q "\b$needed\b" <<<"$(dpkg-deb -f "$package" Depends)" ||
    { echo "package.sh: the package does not name $needed, which the program loads" >&2; exit 1; }
done
mkdir -p "$out"
mv "$package" "$out"
echo "$out/${package##*/}"
