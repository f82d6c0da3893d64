#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The program runs, and of the toolkit it loads the core library alone.
set -euo pipefail
"$1"
loaded=$(ldd "$1" | grep -o 'libQt6[A-Za-z]*' | sort -u | tr '\n' ' ')
[ "$loaded" = "libQt6Core " ] || {
    echo "loads $loaded"
    exit 1
}
