#!/usr/bin/env fish
# Completes command lines as fish does and compares what comes.
# completion.fish FILE_WITH_COMPLETIONS
source $argv[1]; or exit 1

set -g folder (mktemp -d)
cd $folder; or exit 1
mkdir backups
touch gate.cfg

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

gives 'alarms,app-version,config,erdinfo,firmware,version' ''
gives '--help,--json,--version' --
gives 'check,compare,installable,lint,plan,rules,show,sort' 'version '
gives 'set,show,splice' 'config s'
gives 'set,show,splice' '--json config s'
gives 'backups/,gate.cfg' 'config show '
gives '--help,--json,--key,--password-file,--recursive,--section' 'config show --'
gives 'address,name' 'config diff --by '
gives '' 'config show gate.cfg --section '
gives 'backups/,gate.cfg' 'config set gate.cfg audio level 70 --output '
gives 'backups/' 'config collect gate.cfg --output-folder '
gives '--in-place' 'config remove gate.cfg text --i'
gives 'backups/,gate.cfg' 'firmware '
gives '' 'app-version '
gives '' 'version check --model '

cd /
rm -r $folder
test $failures -eq 0
