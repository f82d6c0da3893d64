#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs PROGRAM against SIMULATOR on an address of its own; it must see channel A play.
set -euo pipefail
address=127.254.$((RANDOM % 250 + 1)).$((RANDOM % 250 + 1))
coproc "$2" --address "$address" --demo --run-time 60
trap 'kill $COPROC_PID 2>/dev/null || true' EXIT
read -r -t 20 line <&"${COPROC[0]}"
[[ $line == "listening on"* ]]
"$1" "$address" | tee /dev/stderr | grep -q '^channel A: play$'
