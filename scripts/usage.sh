# shellcheck shell=sh
# Read by the scripts beside it: --help prints what stands at their head, and nothing else happens;
# wrong_usage does the same for arguments that a script does not know.

this_script=$(cd "$(dirname "$0")" && pwd)/${0##*/}
usage() {
    sed -n '2,/^[^#]/{ /SPDX-/d; s/^# \{0,1\}//p; }' "$this_script"
}

wrong_usage() {
    usage >&2
    exit 2
}

case ${1-} in
-h | --help)
    usage
    exit 0
    ;;
esac
