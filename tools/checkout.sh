# Sourced with $top set, by ./run, ./test and whatever else builds: whose checkout it is, and what is built in it.

# hand_to_owner SECTIONS SCRIPT ARGUMENT…: root installs what is missing, and goes on as the one who owns the checkout;
# what root made in it would stop the owner ever after.
hand_to_owner() {
  local sections=$1 owner
  shift
  [ "$(id -u)" -eq 0 ] || return 0
  owner=$(stat -c %U "$top")
  if [ "$owner" = root ] || ! runuser -u "$owner" -- test -w "$top" 2>/dev/null; then return 0; fi
  # shellcheck disable=SC2086  # words
  "$top/tools/setup.sh" $sections
  echo "${1##*/}: $top belongs to $owner: going on as that user" >&2
  exec runuser -u "$owner" -- env -u XDG_RUNTIME_DIR HOME="$(getent passwd "$owner" | cut -d: -f6)" \
    USER="$owner" LOGNAME="$owner" "$@"
}

# build PRESET TARGET…: without targets everything of the preset.
build() {
  local preset=$1 folder="$top/build/$1" place made_for
  shift
  for place in "$top" "$top/build" "$folder"; do
    if [ -e "$place" ] && [ ! -w "$place" ]; then
      echo "${0##*/}: $place belongs to $(stat -c %U "$place"), and you may not write there. One of these helps:" >&2
      echo "  sudo chown -R $(id -un) '$top'     makes the checkout yours" >&2
      echo "  git clone '$top' FOLDER     gives you one of your own" >&2
      return 1
    fi
  done
  # A checkout that was copied or moved brought build files along that lead to its old place: they would build and start
  # what lies there.
  made_for=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt" 2>/dev/null || true)
  if [ "${made_for:-$top}" != "$top" ]; then
    echo "${0##*/}: build/$preset was made for $made_for, it is built anew" >&2
    rm -rf "$folder"
  fi
  cd "$top"
  [ "$folder/build.ninja" -nt CMakePresets.json ] || cmake --preset "$preset" -Wno-dev
  cmake --build "$folder" -j "${JXC_JOBS:-$(nproc)}" ${1:+--target "$@"}
}
