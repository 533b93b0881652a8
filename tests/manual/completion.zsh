#!/usr/bin/env zsh
# Completes command lines in a zsh of its own, on a terminal, and compares what comes.
# completion.zsh FILE_WITH_COMPLETIONS
zmodload zsh/zpty || exit 1
setopt no_nomatch
folder=$(mktemp -d)
trap 'rm -rf $folder' EXIT
mkdir $folder/functions $folder/site $folder/site/backups
cp $1 $folder/functions/_vantero-formats
print -l '#:1.3' '#:VN-3.0.6.29' '# Camera IP: 10.14.7.21' '' \
    'SECTION ethernet' 'IPADDR=10.14.7.121' 'NTP=ntp.site.example' 'ENDSECTION ethernet' '' \
    'SECTION two words' 'name=South gate' 'ENDSECTION two words' >$folder/site/gate.cfg

# The shell prints every word that it would offer on a line of its own, between two marks.
cat >$folder/rc <<'END'
PS1='ready> '
fpath=(FOLDER/functions $fpath)
autoload -Uz compinit && compinit -u -d FOLDER/dump
cd FOLDER/site
zstyle ':completion:*' completer _complete
zmodload zsh/zutil
compadd() {
    if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
        builtin compadd "$@"
        return
    fi
    typeset -g -a offered_words
    builtin compadd -A offered_words "$@"
    local word
    for word in $offered_words; do
        print -r -- "$word" >>FOLDER/offered
    done
    builtin compadd "$@"
}
finish() { print -r -- end >>FOLDER/offered }
zle -N finish
bindkey '^X' finish
bindkey '^I' complete-word
unsetopt beep
print started >FOLDER/offered
END
sed -i "s|FOLDER|$folder|g" $folder/rc

failures=0

# gives EXPECTED LINE: the cursor stands at the end of the line.
gives() {
    local got i
    rm -f $folder/offered
    zpty -b shell "env ZDOTDIR=$folder TERM=dumb zsh -f -i"
    zpty -w shell "source $folder/rc"
    for ((i = 0; i < 1200; ++i)); do
        [[ -s $folder/offered ]] && break
        sleep 0.05
        zpty -r -t shell >/dev/null
    done
    : >$folder/offered
    zpty -w -n shell "vantero-formats $2"$'\t\x18'
    for ((i = 0; i < 1200; ++i)); do
        [[ $(<$folder/offered) == *end ]] && break
        sleep 0.05
        zpty -r -t shell >/dev/null
    done
    zpty -d shell
    got=$(grep -vx end $folder/offered | LC_ALL=C sort -u | paste -sd,)
    if [[ $got != $1 ]]; then
        print -ru2 -- "vantero-formats $2: \"$got\" instead of \"$1\""
        failures=$((failures + 1))
    fi
}

gives 'alarms,app-version,config,erdinfo,firmware,help,version' ''
gives 'set,show,splice' 'help config s'
gives '--color,--help,--json,--version,-h' -
gives 'check,compare,installable,lint,plan,rules,show,sort' 'version '
gives 'set,show,splice' 'config s'
gives '--archive-size-limit,--entry-count-limit,--entry-size-limit,--help,--json,--key,--password-file,--ratio-limit,--recursive,--section,--total-size-limit,-h' 'config show -'
gives 'address,name' 'config diff --by '
gives 'backups,gate.cfg' 'config show '
gives 'backups,gate.cfg' '--json config show '
gives 'ethernet,two\ words' 'config show gate.cfg --section '
gives 'IPADDR,NTP' 'config show gate.cfg --section ethernet --key '
gives 'ethernet,two\ words' 'config set gate.cfg '
gives 'IPADDR,NTP' 'config set gate.cfg ethernet '
gives '' 'config set gate.cfg ethernet NTP '
gives 'backups,gate.cfg' 'config set --set ethernet/NTP=x gate.cfg '
gives 'H30,H40,K30,K40,W40' 'version check --model '
gives 'k30-h30-k40-pattern,k30-h30-k40-return,k40-step' 'version rules k'
gives 'backups' 'config collect gate.cfg --output-folder '
gives 'backups,gate.cfg' 'firmware gate.cfg '
gives '' 'app-version '
exit $((failures > 0))
