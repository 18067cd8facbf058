#!/usr/bin/env bash
# Runs one tool test: run_case.sh SCRIPT CASE sources lib.sh and SCRIPT, then
# calls the function case_CASE in a fresh private folder ($TMPDIR, also the
# working directory), removed afterwards. Exit status: the case's own (0 pass,
# 77 skip, anything else fail). Cases run with `set -euo pipefail`, so any
# unexpected failing command fails the case; use `run` for commands whose
# failure is the point.
set -euo pipefail
script=$1
name=$2
: "${QUILL:?QUILL must name the quill executable}"
: "${SAMPLES:?SAMPLES must name the sample data folder}"
TMPDIR=$(mktemp -d "${QUILL_TEST_TMP:-/tmp}/quill-tool-$name.XXXXXX")
export TMPDIR QUILL SAMPLES
# Cases may leave write-protected files or folders behind on purpose.
# Cleanups registered with at_exit (lib.sh) run first.
cleanups=()
trap 'for c in "${cleanups[@]}"; do eval "$c" || true; done; chmod -R u+rwx "$TMPDIR" 2>/dev/null; rm -rf "$TMPDIR"' EXIT
cd "$TMPDIR"
# shellcheck source=lib.sh
source "$(dirname "$0")/lib.sh"
# shellcheck disable=SC1090
source "$script"
"case_$name"
