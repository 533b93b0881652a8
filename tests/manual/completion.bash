#!/bin/bash
# Completes command lines as bash does and compares what comes.
# completion.bash FILE_WITH_COMPLETIONS
set -u
# shellcheck source=/dev/null
source "$1"
complete -p vantero-formats >/dev/null || exit 1

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
mkdir backups
touch 'two words.cfg'
cat >gate.cfg <<'END'
#:1.3
#:VN-3.0.6.29
# Camera IP: 10.14.7.21

SECTION ethernet
IPADDR=10.14.7.121
NTP=ntp.site.example
ENDSECTION ethernet

SECTION two words
name=South gate
ENDSECTION two words
END

failures=0

# gives EXPECTED WORD…: the last word is the one under the cursor.
gives() {
    local expected=$1 got
    shift
    COMP_WORDS=(vantero-formats "$@")
    COMP_CWORD=$#
    COMPREPLY=()
    _vantero_formats
    got=$(printf '%s\n' "${COMPREPLY[@]-}" | LC_ALL=C sort | paste -sd,)
    if [[ $got != "$expected" ]]; then
        printf 'vantero-formats %s: "%s" instead of "%s"\n' "$*" "$got" "$expected" >&2
        failures=$((failures + 1))
    fi
}

all_files='backups,gate.cfg,two words.cfg'

gives '--color=,--help,--json,--version,alarms,app-version,config,erdinfo,firmware,help,version' ''
gives 'always,auto,never' --color = ''
gives 'always,auto' --color = a
gives 'config' --color = always c
gives 'alarms,app-version,config,erdinfo,firmware,version' help ''
gives 'set,show,splice' help config s
gives '' help config show ''
gives 'config' c
gives 'config' --json c
gives '' frobnicate ''
gives '--help,check,compare,installable,lint,plan,rules,show,sort' version ''
gives 'set,show,splice' config s
gives 'set,show,splice' config --json s # it is one of the words that may stand anywhere
gives "$all_files" config show ''
gives 'gate.cfg' config show g
gives '--archive-size-limit,--entry-count-limit,--entry-size-limit,--help,--json,--key,--password-file,--ratio-limit,--recursive,--section,--total-size-limit' config show --
gives '--archive-size-limit,--entry-count-limit,--entry-size-limit,--help,--json,--key,--password-file,--ratio-limit,--recursive,--total-size-limit' config show gate.cfg --section audio --
gives 'ethernet,two\ words' config show gate.cfg --section ''
gives 'ethernet' config show gate.cfg --section e
gives 'ethernet,two\ words' config show gate.cfg --section = ''
gives 'IPADDR,NTP,name' config show gate.cfg --key ''
gives 'IPADDR,NTP' config show gate.cfg --section ethernet --key ''
gives '' config show 'two words.cfg' --section ''
gives 'ethernet/IPADDR=,ethernet/NTP=' config set gate.cfg --set ethernet/
gives 'ethernet/IPADDR,ethernet/NTP,two\ words/name' config table gate.cfg --key ''
gives '10.14.7.21' config table gate.cfg --where address = 1
gives 'address=10.14.7.21' config table gate.cfg --where a
gives "$all_files" config show gate.cfg ''
gives 'address,name' config diff --by ''
gives 'name' config diff --by n
gives "$all_files" config show --section audio --key level ''
gives "$all_files" config show -- ''
gives '' config show -- --
gives 'ethernet,two\ words' config set gate.cfg ''
gives 'IPADDR,NTP' config set gate.cfg ethernet ''
gives '' config set gate.cfg ethernet NTP ''
gives "$all_files" config set gate.cfg --set ethernet/NTP = x ''
gives "$all_files" config set gate.cfg audio level 70 --output ''
gives 'gate.cfg' config set gate.cfg audio level 70 --output = g
gives "$all_files" config set gate.cfg audio level 70 --output =
gives "$all_files" config splice gate.cfg ''
gives 'ethernet,two\ words' config splice gate.cfg gate.cfg ''
gives "$all_files" config collect backups gate.cfg ''
gives 'backups' config collect . --output-folder ''
gives '--in-place' config remove gate.cfg text audio --i
gives 'ethernet' config remove gate.cfg text e
gives "$all_files" firmware ''
gives "$all_files" firmware gate.cfg gate.cfg ''
gives '' app-version ''
gives 'H30,H40,K30,K40,W40' version check --model ''
gives 'k30-h30-k40-pattern,k30-h30-k40-return,k40-step' version rules k
gives '--all-reasons,--archive-size-limit,--available,--configurations,--csv,--entry-count-limit,--entry-size-limit,--help,--json,--literal,--models,--password-file,--ratio-limit,--recursive,--total-size-limit' version check --model K40D --
gives '' erdinfo write event.erdinfo --id1 ''

exit "$((failures > 0))"
