#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Shows the demo from BUILD_FOLDER. Where there is a display: the desktop, on a simulated server.
# Elsewhere: the story, then pictures of the desktop in build/demo.
set -euo pipefail
build=$(cd "$1" && pwd)
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$build/bin/tarn-desk" "${@:2}"
fi

"$build/bin/tarn-story" --simulator "$build/bin/vesk-sim" "${@:2}"

pictures=$(dirname "$build")/demo
mkdir -p "$pictures"
printf '\nThe desktop\n'
for size in 1280x720 1920x1080; do
    for page in Channels Outputs Server Configuration; do
        file=$pictures/desk-${page,,}-$size.png
        # What the platform without a display lacks is of no interest here.
        QT_LOGGING_RULES='qt.qpa.*=false' "$build/bin/tarn-desk" --page "$page" --size "$size" \
            --screenshot "$file" --after 3 2>"$pictures/errors.txt" || {
            cat "$pictures/errors.txt" >&2
            exit 1
        }
    done
done
rm -f "$pictures/errors.txt"
