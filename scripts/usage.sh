# shellcheck shell=sh
# Read by the scripts beside it: --help prints what stands at their head, and nothing else happens.

this_script=$(cd "$(dirname "$0")" && pwd)/${0##*/}
usage() {
    sed -n '2,/^[^#]/{ /SPDX-/d; s/^# \{0,1\}//p; }' "$this_script"
}

case ${1-} in
-h | --help)
    usage
    exit 0
    ;;
esac
