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

_vantero_formats_skip_json() {
    while [[ ${words[0]-} == --json ]]; do
        words=("${words[@]:1}")
    done
}

_vantero_formats() {
    local current=${COMP_WORDS[COMP_CWORD]} words=() i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        words+=("${COMP_WORDS[i]}")
    done
    # "--output=name" comes as three words.
    [[ $current == = ]] && current=
    ((${#words[@]})) && [[ ${words[-1]} == = ]] && unset 'words[-1]'

    _vantero_formats_skip_json
    if ((${#words[@]} == 0)); then
        _vantero_formats_reply -W 'config version firmware app-version alarms erdinfo --help --version --json'
        return
    fi

    local command=${words[0]} seconds=''
    words=("${words[@]:1}")
    case $command in
        config) seconds='show set add unset remove splice merge diff write lint redact collect table' ;;
        version) seconds='show compare check plan installable rules sort lint' ;;
        alarms) seconds='list update lint' ;;
        erdinfo) seconds='write show layout' ;;
    esac
    if [[ -n $seconds ]]; then
        _vantero_formats_skip_json
        if ((${#words[@]} == 0)); then
            _vantero_formats_reply -W "$seconds --help"
            return
        fi
        command+=" ${words[0]}"
        words=("${words[@]:1}")
    fi

    local options='' files='' folders='' others='' choices='' again='' several='' arguments=''
    case $command in
    'config show')
        options='--section --key --recursive --password-file --json --help'
        files='--password-file' folders='' others='--section|--key'
        choices='' again=''
        several='' arguments='file ...'
        ;;
    'config set')
        options='--set --index --existing --if --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--set|--if|--index'
        choices='' again='--set|--if'
        several='--set' arguments='file text text text'
        ;;
    'config add')
        options='--add --existing --if --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--add|--if'
        choices='' again='--add|--if'
        several='--add' arguments='file text text text'
        ;;
    'config unset')
        options='--key --value --index --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--key|--value|--index'
        choices='' again='--key'
        several='--key' arguments='file text text'
        ;;
    'config remove')
        options='--section --outer-comments --section-comments --empty-lines --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--section'
        choices='' again='--section'
        several='--section' arguments='file text ...'
        ;;
    'config splice')
        options='--recursive --output --in-place --dry-run --help'
        files='--output' folders='' others=''
        choices='' again=''
        several='' arguments='file file text'
        ;;
    'config merge')
        options='--network --motion --time-tables --output --explain --json --help'
        files='--output' folders='' others=''
        choices='' again=''
        several='' arguments='file file'
        ;;
    'config diff')
        options='--by --password-file --json --help'
        files='--password-file' folders='' others=''
        choices='--by=address,name' again=''
        several='' arguments='file file'
        ;;
    'config write')
        options='--output --help'
        files='--output' folders='' others=''
        choices='' again=''
        several='' arguments='file'
        ;;
    'config lint')
        options='--severity --json --recursive --password-file --help'
        files='--password-file' folders='' others=''
        choices='--severity=error,warning,note' again=''
        several='' arguments='file ...'
        ;;
    'config redact')
        options='--key --pattern --report --recursive --output --in-place --dry-run --help'
        files='--output' folders='' others='--key|--pattern'
        choices='' again='--key|--pattern'
        several='' arguments='file ...'
        ;;
    'config collect')
        options='--recursive --files-from --null --source-password-file --on-error --jobs --entry-size-limit --archive-size-limit --entry-count-limit --ratio-limit --output-archive --password-file --output-folder --json --help'
        files='--files-from|--source-password-file|--output-archive|--password-file' folders='--output-folder' others='--jobs|--entry-size-limit|--archive-size-limit|--entry-count-limit|--ratio-limit'
        choices='--on-error=stop,skip' again=''
        several='' arguments='file ...'
        ;;
    'config table')
        options='--recursive --files-from --null --password-file --on-error --jobs --entry-size-limit --archive-size-limit --entry-count-limit --ratio-limit --key --where --csv --jsonl --json --help'
        files='--files-from|--password-file' folders='' others='--key|--where|--jobs|--entry-size-limit|--archive-size-limit|--entry-count-limit|--ratio-limit'
        choices='--on-error=stop,skip' again='--key|--where'
        several='' arguments='file ...'
        ;;
    'version show')
        options='--json --help'
        files='' folders='' others=''
        choices='' again=''
        several='' arguments='text'
        ;;
    'version compare')
        options='-v --json --help'
        files='' folders='' others=''
        choices='' again=''
        several='' arguments='text text'
        ;;
    'version check')
        options='--model --all-reasons --literal --configurations --recursive --password-file --models --available --csv --json --help'
        files='--configurations|--password-file|--models|--available' folders='' others='--model'
        choices='' again='--configurations|--available'
        several='' arguments='text text'
        ;;
    'version plan')
        options='--model --available --json --help'
        files='--available' folders='' others='--model'
        choices='' again='--available'
        several='' arguments='text text'
        ;;
    'version installable')
        options='--model --json --help'
        files='' folders='' others='--model'
        choices='' again=''
        several='' arguments='text file ...'
        ;;
    'version rules')
        options='--json --help'
        files='' folders='' others=''
        choices='' again=''
        several='' arguments='text ...'
        ;;
    'version sort')
        options='--json --help'
        files='' folders='' others=''
        choices='' again=''
        several='' arguments='file'
        ;;
    'version lint')
        options='--severity --json --help'
        files='' folders='' others=''
        choices='--severity=error,warning,note' again=''
        several='' arguments='text ...'
        ;;
    'firmware')
        options='-v --json --help'
        files='' folders='' others=''
        choices='' again=''
        several='' arguments='file ...'
        ;;
    'app-version')
        options='--revision --debug --json --help'
        files='' folders='' others='--revision'
        choices='' again=''
        several='' arguments='text'
        ;;
    'alarms list')
        options='--json --text-order --help'
        files='' folders='' others=''
        choices='' again=''
        several='' arguments='file ...'
        ;;
    'alarms update')
        options='--json --lines --help'
        files='' folders='' others=''
        choices='' again=''
        several='' arguments='file ...'
        ;;
    'alarms lint')
        options='--severity --json --updates --help'
        files='' folders='' others=''
        choices='--severity=error,warning,note' again=''
        several='' arguments='file ...'
        ;;
    'erdinfo write')
        options='--id1 --id2 --number1 --number2 --time1 --time2 --text1 --text2 --text3 --json --help'
        files='' folders='' others='--text1|--text2|--text3|--id1|--id2|--number1|--number2|--time1|--time2'
        choices='' again=''
        several='' arguments='file'
        ;;
    'erdinfo show')
        options='--json --help'
        files='' folders='' others=''
        choices='' again=''
        several='' arguments='file'
        ;;
    'erdinfo layout')
        options='--json --help'
        files='' folders='' others=''
        choices='' again=''
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
    [[ ${words[count]-} == file ]] && _vantero_formats_names -f
    return 0
}

complete -F _vantero_formats vantero-formats
