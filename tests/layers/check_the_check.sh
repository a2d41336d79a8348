#!/usr/bin/env bash
# The layer check must fail on an include that points up, and on Qt in the engine.
set -euo pipefail
check="$1"
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir -p "$tree/store" "$tree/outline" "$tree/platform/word/engine"
echo '#include "store/Tables.h"' >"$tree/outline/Good.h"
"$check" "$tree" >/dev/null || { echo "a clean tree was refused"; exit 1; }
echo '#include "outline/Good.h"' >"$tree/store/Bad.h"
! "$check" "$tree" >/dev/null || { echo "an include that points up was accepted"; exit 1; }
rm "$tree/store/Bad.h"
echo '#include <QString>' >"$tree/platform/word/engine/Bad.h"
! "$check" "$tree" >/dev/null || { echo "Qt in the engine was accepted"; exit 1; }
echo "The check fails where it must."
