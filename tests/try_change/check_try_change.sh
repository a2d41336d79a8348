#!/usr/bin/env bash
# tools/try-change must tell a change that a test notices from one that none does, and must leave
# the sources, the build and the folder for temporary files as they were.
set -euo pipefail
top="$1" build="$2"
keys="$top/src/outline/OutlineKeys.cpp"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export TMPDIR="$scratch"

# answer STATUS TEXT FILE EXPRESSION: what must come of a change.
answer() {
  local status=0 said
  said=$("$top/tools/try-change" --as-built --build "$build" "$3" "$4" 'outline:OutlineKeys.*') || status=$?
  [[ $status = "$1" && $said = $2 ]] || { echo "'$4' gave $status: $said"; exit 1; }
}
state() { stat -c '%Y %s' "$keys" "${keys%.cpp}.h" "$build/bin/tests_outline"; }

before=$(state | md5sum)
answer 0 'noticed by OutlineKeys.*' "$keys" "s/key.count(u'.')/0/"
answer 1 'lived' "$keys" 's/Nothing before the first point/Nothing/'
answer 2 'not tried: *changes nothing*' "$keys" 's/words that stand nowhere//'
# A header that few files read: each of them is compiled.
answer 2 'not tried: *do not build*' "$top/src/outline/NodeMove.h" 's/Moved run(/Unmade run(/'
[ "$(ls -A "$scratch")" = "" ] || { echo "something is left behind: $(ls "$scratch")"; exit 1; }
[ "$before" = "$(state | md5sum)" ] || { echo "the sources or the build have changed"; exit 1; }
echo "Changes are told apart, and nothing is left behind."
