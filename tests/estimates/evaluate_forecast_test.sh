#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The comparison of forecasts with what came, on drives whose outcome is plain. Usage: evaluate_forecast_test.sh PROGRAM
set -euo pipefail

drive() { # drive ID HOURS WEAR...
  local id=$1 readings=""
  shift
  while [ $# -gt 0 ]; do
    readings+="${readings:+,}{\"hours\":$1,\"firmware\":\"1\",\"health\":{\"percentage_used\":$2}}"
    shift 2
  done
  echo "{\"drive\":\"$id\",\"readings\":[$readings]}"
}

table=$({
  drive 0a 9500 9 14500 14          # as forecast: inside, within a factor of 2
  drive 0b 9500 9 14500 9           # came to a stand: outside
  drive 0c 9500 9 11500 10          # no 3 percent expected: not judged
  drive 1a 4500 4 9500 9 14500 14   # judged from one and from two readings
  drive 1b 8000 9 9500 9 19500 9    # stands still, and is not forecast from two readings
} | "$1")
expected='half       readings  drives forecast%     factor2% factor2-all%   inside%   estimate/truth at 10 25 50 75 90%
constants         1       2     100.0         50.0         50.0      50.0   0.00 0.00 0.00 0.00 0.00
other             1       2     100.0         50.0         50.0      50.0   0.00 0.00 0.00 0.00 0.00
both              1       4     100.0         50.0         50.0      50.0   0.00 0.00 0.00 0.92 0.92
constants         2       0       0.0          0.0          0.0       0.0   0.00 0.00 0.00 0.00 0.00
other             2       2      50.0        100.0         50.0     100.0   1.00 1.00 1.00 1.00 1.00
both              2       2      50.0        100.0         50.0     100.0   1.00 1.00 1.00 1.00 1.00'
diff <(echo "$expected") <(echo "$table")
! echo '{"drive":"0a"}' | "$1" 2>/dev/null
