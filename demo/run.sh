#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs the story from BUILD_FOLDER.
set -euo pipefail
build=$(cd "$1" && pwd)
exec "$build/bin/tarn-story" --simulator "$build/bin/vesk-sim" "${@:2}"
