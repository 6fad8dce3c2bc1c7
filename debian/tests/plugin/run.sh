# SPDX-License-Identifier: Apache-2.0
# run.sh FOLDER: runs the host on the plug-in that were built there, and compares what it prints.
set -eu
"$1/host" "$1/plugin.so" >"$1/output"
diff - "$1/output" <<'EXPECTED'
object 42, made now
VENDOR: WDC
RPM: 10000
HEALTH: OK, one of 2
TABLE: <drives count="1"/>
identifiers given: 1
text 10056: Rebuild started on %1
unloaded: yes
EXPECTED
