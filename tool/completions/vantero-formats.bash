# Completions of vantero-formats(1) for bash.
# Written by scripts/manual from the table of commands: do not edit.

# Sets the replies to the given words, or file names, that begin like the current word.
_vantero_formats_reply() {
    COMPREPLY=()
    local line
    while IFS= read -r line; do
        COMPREPLY+=("$line")
    done < <(compgen "$@" -- "$current")
}

_vantero_formats_names() { # -f or -d
    compopt -o filenames 2>/dev/null
    _vantero_formats_reply "$1"
}

# Sets the replies to what the tool knows of a kind: sections of the files on the line, and the like.
_vantero_formats_ask() {
    local line glued=${current%"$last"}
    COMPREPLY=()
    while IFS= read -r line; do
        [[ $line == "$current"* ]] || continue
        line=${line#"$glued"}
        COMPREPLY+=("$(printf %q "$line")")
        [[ $line == *= ]] && compopt -o nospace 2>/dev/null
    done < <("${COMP_WORDS[0]}" --complete "$1" -- "${COMP_WORDS[@]:1}" 2>/dev/null)
}

_vantero_formats_skip_json() {
    while [[ ${words[0]-} == --json || ${words[0]-} == --color* ]]; do
        words=("${words[@]:1}")
    done
}

_vantero_formats() {
    local current=${COMP_WORDS[COMP_CWORD]} words=() i
    local last=$current # the reply stands for it
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        words+=("${COMP_WORDS[i]}")
    done
    # "--output=name" comes as three words, and so does "a/b=c".
    [[ $current == = ]] && last= && words+=("=") && current=
    for ((i = 1; i < ${#words[@]}; ++i)); do
        [[ ${words[i]} == = ]] || continue
        if [[ ${words[i - 1]} == -* && ${words[i - 1]} != --color ]]; then
            words=("${words[@]:0:i}" "${words[@]:i + 1}")
        elif ((i + 1 == ${#words[@]})); then
            current=${words[i - 1]}=$current
            words=("${words[@]:0:i - 1}")
        else
            words=("${words[@]:0:i - 1}" "${words[i - 1]}=${words[i + 1]}" "${words[@]:i + 2}")
        fi
        i=0
    done
    if [[ $current == --color=* ]]; then
        current=${current#*=}
        _vantero_formats_reply -W 'auto always never'
        return
    fi

    _vantero_formats_skip_json
    if ((${#words[@]} == 0)); then
        _vantero_formats_reply -W 'config version firmware app-version alarms erdinfo help --help --version --json --color='
        return
    fi

    local command=${words[0]} seconds='' help_option=--help
    words=("${words[@]:1}")
    if [[ $command == help ]]; then
        if ((${#words[@]} == 0)); then
            _vantero_formats_reply -W 'config version firmware app-version alarms erdinfo'
            return
        fi
        help_option='' command=${words[0]}
        words=("${words[@]:1}")
    fi
    case $command in
        config) seconds='show set add unset remove splice merge diff write lint redact collect table' ;;
        version) seconds='show compare check plan installable rules sort lint' ;;
        alarms) seconds='list update lint' ;;
        erdinfo) seconds='write show layout' ;;
    esac
    if [[ -n $seconds ]]; then
        _vantero_formats_skip_json
        if ((${#words[@]} == 0)); then
            _vantero_formats_reply -W "$seconds ${help_option-}"
            return
        fi
        command+=" ${words[0]}"
        words=("${words[@]:1}")
    fi

    [[ -n $help_option ]] || return
    local options='' files='' folders='' others='' choices='' asked='' again='' several='' arguments=''
    case $command in
    'config show')
        options='--section --key --recursive --password-file --entry-size-limit --archive-size-limit --total-size-limit --entry-count-limit --ratio-limit --json --help'
        files='--password-file' folders='' others='--entry-size-limit|--archive-size-limit|--total-size-limit|--entry-count-limit|--ratio-limit|--section|--key'
        choices='' asked='--section=section --key=key' again=''
        several='' arguments='file ...'
        ;;
    'config set')
        options='--set --index --existing --if --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--index|--set|--if'
        choices='' asked='--set=assignment --if=assignment' again='--set|--if'
        several='--set' arguments='file section key text'
        ;;
    'config add')
        options='--add --existing --if --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--add|--if'
        choices='' asked='--add=assignment --if=assignment' again='--add|--if'
        several='--add' arguments='file section key text'
        ;;
    'config unset')
        options='--key --value --index --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--value|--index|--key'
        choices='' asked='--key=entry' again='--key'
        several='--key' arguments='file section key'
        ;;
    'config remove')
        options='--section --outer-comments --section-comments --empty-lines --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--section'
        choices='' asked='--section=section' again='--section'
        several='--section' arguments='file section ...'
        ;;
    'config splice')
        options='--recursive --output --in-place --dry-run --help'
        files='--output' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='file file section'
        ;;
    'config merge')
        options='--network --motion --time-tables --output --explain --json --help'
        files='--output' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='file file'
        ;;
    'config diff')
        options='--by --password-file --entry-size-limit --archive-size-limit --total-size-limit --entry-count-limit --ratio-limit --json --help'
        files='--password-file' folders='' others='--entry-size-limit|--archive-size-limit|--total-size-limit|--entry-count-limit|--ratio-limit'
        choices='--by=address,name' asked='' again=''
        several='' arguments='file file'
        ;;
    'config write')
        options='--output --help'
        files='--output' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='file'
        ;;
    'config lint')
        options='--severity --json --recursive --password-file --entry-size-limit --archive-size-limit --total-size-limit --entry-count-limit --ratio-limit --help'
        files='--password-file' folders='' others='--entry-size-limit|--archive-size-limit|--total-size-limit|--entry-count-limit|--ratio-limit'
        choices='--severity=error,warning,note' asked='' again=''
        several='' arguments='file ...'
        ;;
    'config redact')
        options='--key --pattern --report --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--pattern|--key'
        choices='' asked='--key=key' again='--key|--pattern'
        several='' arguments='file ...'
        ;;
    'config collect')
        options='--recursive --files-from --null --on-error --jobs --source-password-file --entry-size-limit --archive-size-limit --total-size-limit --entry-count-limit --ratio-limit --output-archive --password-file --output-folder --json --help'
        files='--files-from|--source-password-file|--output-archive|--password-file' folders='--output-folder' others='--jobs|--entry-size-limit|--archive-size-limit|--total-size-limit|--entry-count-limit|--ratio-limit'
        choices='--on-error=stop,skip' asked='' again=''
        several='' arguments='file ...'
        ;;
    'config table')
        options='--recursive --files-from --null --on-error --jobs --password-file --entry-size-limit --archive-size-limit --total-size-limit --entry-count-limit --ratio-limit --key --where --csv --jsonl --json --help'
        files='--files-from|--password-file' folders='' others='--jobs|--entry-size-limit|--archive-size-limit|--total-size-limit|--entry-count-limit|--ratio-limit|--key|--where'
        choices='--on-error=stop,skip' asked='--key=entry --where=condition' again='--key|--where'
        several='' arguments='file ...'
        ;;
    'version show')
        options='--json --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='text'
        ;;
    'version compare')
        options='-v --json --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='text text'
        ;;
    'version check')
        options='--model --all-reasons --literal --configurations --recursive --password-file --entry-size-limit --archive-size-limit --total-size-limit --entry-count-limit --ratio-limit --models --available --csv --json --help'
        files='--configurations|--password-file|--models|--available' folders='' others='--entry-size-limit|--archive-size-limit|--total-size-limit|--entry-count-limit|--ratio-limit|--model'
        choices='' asked='--model=model' again='--configurations|--available'
        several='' arguments='text text'
        ;;
    'version plan')
        options='--model --available --json --help'
        files='--available' folders='' others='--model'
        choices='' asked='--model=model' again='--available'
        several='' arguments='text text'
        ;;
    'version installable')
        options='--model --json --help'
        files='' folders='' others='--model'
        choices='' asked='--model=model' again=''
        several='' arguments='text file ...'
        ;;
    'version rules')
        options='--json --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='rule ...'
        ;;
    'version sort')
        options='--json --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='file'
        ;;
    'version lint')
        options='--severity --json --help'
        files='' folders='' others=''
        choices='--severity=error,warning,note' asked='' again=''
        several='' arguments='text ...'
        ;;
    'firmware')
        options='-v --json --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='file ...'
        ;;
    'app-version')
        options='--revision --debug --json --help'
        files='' folders='' others='--revision'
        choices='' asked='' again=''
        several='' arguments='text'
        ;;
    'alarms list')
        options='--json --text-order --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='file ...'
        ;;
    'alarms update')
        options='--json --lines --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='file ...'
        ;;
    'alarms lint')
        options='--severity --json --updates --help'
        files='' folders='' others=''
        choices='--severity=error,warning,note' asked='' again=''
        several='' arguments='file ...'
        ;;
    'erdinfo write')
        options='--id1 --id2 --number1 --number2 --time1 --time2 --text1 --text2 --text3 --json --help'
        files='' folders='' others='--text1|--text2|--text3|--id1|--id2|--number1|--number2|--time1|--time2'
        choices='' asked='' again=''
        several='' arguments='file'
        ;;
    'erdinfo show')
        options='--json --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments='file'
        ;;
    'erdinfo layout')
        options='--json --help'
        files='' folders='' others=''
        choices='' asked='' again=''
        several='' arguments=''
        ;;
    *)
        return
        ;;
    esac

    # What stands there already: given options, and the number of arguments.
    local word pending='' only_arguments='' count=0
    for word in "${words[@]}"; do
        if [[ -n $pending ]]; then
            pending=
        elif [[ -z $only_arguments && $word == -- ]]; then
            only_arguments=1
        elif [[ -z $only_arguments && $word == -* ]]; then
            [[ "|$files|$folders|$others|" == *"|$word|"* || " $choices" == *" $word="* ]] &&
                pending=$word
            options=" $options "
            [[ "|$again|" == *"|$word|"* ]] || options=${options/ $word / }
        else
            count=$((count + 1))
        fi
    done
    if [[ -n $pending ]]; then
        [[ "|$files|" == *"|$pending|"* ]] && _vantero_formats_names -f
        [[ "|$folders|" == *"|$pending|"* ]] && _vantero_formats_names -d
        for word in $choices; do
            word=${word#"$pending="}
            [[ $word == -* ]] || _vantero_formats_reply -W "${word//,/ }"
        done
        for word in $asked; do
            [[ $word == "$pending="* ]] && _vantero_formats_ask "${word#*=}"
        done
        return
    fi
    if [[ -z $only_arguments && $current == -* ]]; then
        _vantero_formats_reply -W "$options"
        return
    fi
    [[ -n $several && " ${words[*]} " == *" $several "* ]] && arguments='file ...'
    read -r -a words <<<"$arguments"
    [[ ${words[count]-} != ... ]] || count=$((count - 1))
    ((count >= ${#words[@]})) && [[ $arguments == *...* ]] && count=$((${#words[@]} - 2))
    case ${words[count]-} in
    file) _vantero_formats_names -f ;;
    section|key|entry|assignment|condition|model|rule) _vantero_formats_ask "${words[count]}" ;;
    esac
    return 0
}

complete -F _vantero_formats vantero-formats
