#!/bin/sh
# Runs COMMAND with a home folder of its own, which goes afterwards: shells write into it.
# with_home.sh COMMAND [ARGUMENT…]
set -eu
HOME=$(mktemp -d)
export HOME
trap 'rm -rf "$HOME"' EXIT
unset XDG_CACHE_HOME XDG_CONFIG_HOME XDG_DATA_HOME
"$@"
