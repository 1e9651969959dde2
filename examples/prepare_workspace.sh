#!/usr/bin/env bash
# Copies the example workspace and dates its documents: the state of a document follows from the time of its file, which
# a checkout does not keep. Usage: examples/prepare_workspace.sh DESTINATION
set -euo pipefail
source=$(cd "$(dirname "$0")" && pwd)/workspace
destination=${1:?usage: prepare_workspace.sh DESTINATION}
mkdir -p "$destination"
cp -R "$source/." "$destination"
find "$destination" -type f ! -name '*.dat' -exec touch -d @1763000000 {} +
# Two documents were changed after they had been loaded.
touch -d @1763086400 "$destination/Shaft.CATPart" "$destination/housing/Cover.CATPart"
