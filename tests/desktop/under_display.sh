#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a program on a display of its own, as a user would see it: under_display.sh PROGRAM [WORD...]
set -euo pipefail
exec {numbers}< <(exec Xvfb -displayfd 1 -screen 0 1280x800x24 -nolisten tcp 2>/dev/null)
display=$!
trap 'kill "$display"' EXIT
read -r -t 60 -u "$numbers" number
DISPLAY=:$number QT_QPA_PLATFORM=xcb "$@"
