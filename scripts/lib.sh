# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# Functions that the scripts of this project share; sourced, not run.

PROJECT_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*"; }

die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# Time since the calling script started.
elapsed() { printf '%d min %02d s' $((SECONDS / 60)) $((SECONDS % 60)); }

# Makes the calling script print the given sentence and its running time when it fails.
announce_failure() {
  failure_text=$1
  trap '[ $? -eq 0 ] || say "$failure_text; stopped after $(elapsed)." >&2' EXIT
}

# Compilers and tests then leave nothing outside the checkout. Not for apt, whose download user may not read a
# home folder.
keep_temporary_files_in_checkout() {
  export TMPDIR=$PROJECT_ROOT/build/tmp
  mkdir -p "$TMPDIR"
}
