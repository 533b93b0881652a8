#!/usr/bin/env fish
# Completes command lines as fish does and compares what comes.
# completion.fish FILE_WITH_COMPLETIONS
source $argv[1]; or exit 1

set -g folder (mktemp -d)
cd $folder; or exit 1
mkdir backups
printf '%s\n' '#:1.3' '#:VN-3.0.6.29' '# Camera IP: 10.14.7.21' '' \
    'SECTION ethernet' 'IPADDR=10.14.7.121' 'NTP=ntp.site.example' 'ENDSECTION ethernet' '' \
    'SECTION two words' 'name=South gate' 'ENDSECTION two words' >gate.cfg

set -g failures 0

# gives EXPECTED LINE: the cursor stands at the end of the line.
function gives
    set -l got (complete -C "vantero-formats $argv[2]" | string replace -r '\t.*' '' |
        LC_ALL=C sort | string join ,)
    if test "$got" != "$argv[1]"
        echo "vantero-formats $argv[2]: \"$got\" instead of \"$argv[1]\"" >&2
        set failures (math $failures + 1)
    end
end

gives 'alarms,app-version,config,erdinfo,firmware,help,version' ''
gives 'alarms,app-version,config,erdinfo,firmware,version' 'help '
gives 'set,show,splice' 'help config s'
gives '--color,--help,--json,--version' --
gives '--color=always,--color=auto,--color=never' 'config show --color='
gives 'check,compare,installable,lint,plan,rules,show,sort' 'version '
gives 'set,show,splice' 'config s'
gives 'set,show,splice' '--json config s'
gives 'set,show,splice' '--color=always config s'
gives 'backups/,gate.cfg' 'config show '
gives '--archive-size-limit,--color,--entry-count-limit,--entry-size-limit,--help,--json,--key,--password-file,--ratio-limit,--recursive,--section,--total-size-limit' 'config show --'
gives 'address,name' 'config diff --by '
gives 'ethernet,two words' 'config show gate.cfg --section '
gives 'IPADDR,NTP' 'config show gate.cfg --section ethernet --key '
gives 'ethernet/IPADDR=,ethernet/NTP=,two words/name=' 'config set gate.cfg --set '
gives 'backups/,gate.cfg' 'config set '
gives 'ethernet,two words' 'config set gate.cfg '
gives 'IPADDR,NTP' 'config set gate.cfg ethernet '
gives '' 'config set gate.cfg ethernet NTP '
gives 'backups/,gate.cfg' 'config set gate.cfg --set ethernet/NTP=x '
gives 'backups/,gate.cfg' 'config splice gate.cfg '
gives 'ethernet,two words' 'config splice gate.cfg gate.cfg '
gives 'k30-h30-k40-pattern,k30-h30-k40-return,k40-step' 'version rules k'
gives 'backups/,gate.cfg' 'config set gate.cfg audio level 70 --output '
gives 'backups/' 'config collect gate.cfg --output-folder '
gives '--in-place' 'config remove gate.cfg text --i'
gives 'backups/,gate.cfg' 'firmware '
gives '' 'app-version '
gives 'H30,H40,K30,K40,W40' 'version check --model '
gives '' 'version check --model K40 '

cd /
rm -r $folder
test $failures -eq 0
