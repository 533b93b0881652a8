# Completions of vantero-formats(1) for fish.
# Written by scripts/manual from the table of commands: do not edit.

# Whether the words before the cursor are just those given.
function __vantero_formats_at
    set -l words (commandline -opc)
    set -e words[1]
    set words (string match -rv -- '^--(json|color.*)$' $words)
    test "$words" = "$argv"
end

# Whether the words before the cursor begin with those given.
function __vantero_formats_in
    set -l words (commandline -opc)
    set -e words[1]
    set words (string match -rv -- '^--(json|color.*)$' $words)
    set -l count (count $argv)
    test "$words[1..$count]" = "$argv"
end

# Whether the word at the cursor is an argument of the command $argv[1] between the $argv[4]-th and the
# $argv[5]-th (0: any behind). $argv[2] are the options with a value; $argv[3] is the one with which
# all arguments are files.
function __vantero_formats_place
    __vantero_formats_in (string split ' ' -- $argv[1]); or return
    set -l words (commandline -opc)
    set -e words[1]
    set words (string match -rv -- '^--(json|color.*)$' $words)
    set -e words[1..(count (string split ' ' -- $argv[1]))]
    contains -- "$argv[3]" $words; and test -n "$argv[3]"; and return 1
    set -l valued (string split , -- $argv[2])
    set -l number 1
    set -l skip 0
    set -l only 0
    for word in $words
        if test $skip -eq 1
            set skip 0
        else if test $only -eq 0; and test "$word" = --
            set only 1
        else if test $only -eq 0; and string match -q -- '-*' $word
            contains -- $word $valued; and set skip 1
        else
            set number (math $number + 1)
        end
    end
    test $skip -eq 0; and test $number -ge $argv[4]; and test $argv[5] -eq 0 -o $number -le $argv[5]
end

# Whether the words are of the command $argv[1], with the option $argv[2].
function __vantero_formats_has
    __vantero_formats_in (string split ' ' -- $argv[1]); and contains -- $argv[2] (commandline -opc)
end

# What the tool knows of a kind: sections of the files on the line, and the like.
function __vantero_formats_ask
    set -l words (commandline -opc)
    $words[1] --complete $argv[1] -- $words[2..-1] 2>/dev/null
end

complete -c vantero-formats -f
complete -c vantero-formats -n '__vantero_formats_at' -a config -d 'commands: show, set, add, unset, remove, splice, merge, diff, write, lint, redact, collect, table'
complete -c vantero-formats -n '__vantero_formats_at' -a version -d 'commands: show, compare, check, plan, installable, rules, sort, lint'
complete -c vantero-formats -n '__vantero_formats_at' -a firmware -d 'show the versions of firmware packages'
complete -c vantero-formats -n '__vantero_formats_at' -a app-version -d 'show the version of an application as people read it'
complete -c vantero-formats -n '__vantero_formats_at' -a alarms -d 'commands: list, update, lint'
complete -c vantero-formats -n '__vantero_formats_at' -a erdinfo -d 'commands: write, show, layout'
complete -c vantero-formats -n '__vantero_formats_at' -a help -d 'show what a command is for'
complete -c vantero-formats -n '__vantero_formats_at help' -a 'config version firmware app-version alarms erdinfo'
complete -c vantero-formats -n '__vantero_formats_at help config' -a 'show set add unset remove splice merge diff write lint redact collect table'
complete -c vantero-formats -n '__vantero_formats_at help version' -a 'show compare check plan installable rules sort lint'
complete -c vantero-formats -n '__vantero_formats_at help alarms' -a 'list update lint'
complete -c vantero-formats -n '__vantero_formats_at help erdinfo' -a 'write show layout'
complete -c vantero-formats -n '__vantero_formats_at' -l version -d 'show the version'
complete -c vantero-formats -n '__vantero_formats_at' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_at config' -a show -d 'show the header and sections of a configuration'
complete -c vantero-formats -n '__vantero_formats_at config' -a set -d 'set the newest value of a key'
complete -c vantero-formats -n '__vantero_formats_at config' -a add -d 'add a value to those of a key'
complete -c vantero-formats -n '__vantero_formats_at config' -a unset -d 'remove a key with all its values'
complete -c vantero-formats -n '__vantero_formats_at config' -a remove -d 'remove sections, comments and empty lines'
complete -c vantero-formats -n '__vantero_formats_at config' -a splice -d 'take a section over from another configuration'
complete -c vantero-formats -n '__vantero_formats_at config' -a merge -d 'keep entries of the configuration that is replaced'
complete -c vantero-formats -n '__vantero_formats_at config' -a diff -d 'compare two configurations by section and key'
complete -c vantero-formats -n '__vantero_formats_at config' -a write -d 'make a configuration of its JSON'
complete -c vantero-formats -n '__vantero_formats_at config' -a lint -d 'find what is wrong with configurations'
complete -c vantero-formats -n '__vantero_formats_at config' -a redact -d 'replace the secrets of configurations'
complete -c vantero-formats -n '__vantero_formats_at config' -a collect -d 'gather the configurations of folders and archives'
complete -c vantero-formats -n '__vantero_formats_at config' -a table -d 'print a row a configuration of folders and archives'
complete -c vantero-formats -n '__vantero_formats_at version' -a show -d 'show the components of a version'
complete -c vantero-formats -n '__vantero_formats_at version' -a compare -d 'compare two versions or patterns'
complete -c vantero-formats -n '__vantero_formats_at version' -a check -d 'tell whether an update is safe'
complete -c vantero-formats -n '__vantero_formats_at version' -a plan -d 'find the way of safe updates to a version'
complete -c vantero-formats -n '__vantero_formats_at version' -a installable -d 'tell which versions a camera may get, and how'
complete -c vantero-formats -n '__vantero_formats_at version' -a rules -d 'show the rules of safe updates'
complete -c vantero-formats -n '__vantero_formats_at version' -a sort -d 'sort versions'
complete -c vantero-formats -n '__vantero_formats_at version' -a lint -d 'find what is read otherwise than it looks'
complete -c vantero-formats -n '__vantero_formats_at alarms' -a list -d 'show an alarm list as a tree'
complete -c vantero-formats -n '__vantero_formats_at alarms' -a update -d 'show an alarm update as scripts get it'
complete -c vantero-formats -n '__vantero_formats_at alarms' -a lint -d 'tell all faults of alarm lists and alarm updates'
complete -c vantero-formats -n '__vantero_formats_at erdinfo' -a write -d 'write the record of an event recording'
complete -c vantero-formats -n '__vantero_formats_at erdinfo' -a show -d 'show and check the record of an event recording'
complete -c vantero-formats -n '__vantero_formats_at erdinfo' -a layout -d 'show the fields of the record of an event recording'
complete -c vantero-formats -s h -l help -d 'show help'
complete -c vantero-formats -l color -x -a 'auto always never' -d 'say when to use colors'
complete -c vantero-formats -n '__vantero_formats_place "config show" "--section,--key,--password-file,--entry-size-limit,--archive-size-limit,--total-size-limit,--entry-count-limit,--ratio-limit" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in config show' -l section -d 'only this section' -x -a '(__vantero_formats_ask section)'
complete -c vantero-formats -n '__vantero_formats_in config show' -l key -d 'only the values of this key of the section' -x -a '(__vantero_formats_ask key)'
complete -c vantero-formats -n '__vantero_formats_in config show' -l recursive -d 'look into folders, at any depth, and into archives'
complete -c vantero-formats -n '__vantero_formats_in config show' -l password-file -d 'take the password of all archives that are read from the first line of this file, "-" for standard input' -r -F
complete -c vantero-formats -n '__vantero_formats_in config show' -l entry-size-limit -d 'refuse larger entries of archives; the default is 256 MiB' -x
complete -c vantero-formats -n '__vantero_formats_in config show' -l archive-size-limit -d 'refuse what exceeds this in one archive; the default is 1 GiB' -x
complete -c vantero-formats -n '__vantero_formats_in config show' -l total-size-limit -d 'refuse what exceeds this in all archives together; no limit unless set, but 4 GiB where an archive is written, as that is held in memory' -x
complete -c vantero-formats -n '__vantero_formats_in config show' -l entry-count-limit -d 'refuse archives with more entries; the default is 1000000' -x
complete -c vantero-formats -n '__vantero_formats_in config show' -l ratio-limit -d 'refuse entries of more than 16 MiB that are compressed more than so many times; the default is 1000' -x
complete -c vantero-formats -n '__vantero_formats_in config show' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "config set" "--set,--index,--if,--output" "--set" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_place "config set" "--set,--index,--if,--output" "--set" 2 2' -a '(__vantero_formats_ask section)'
complete -c vantero-formats -n '__vantero_formats_place "config set" "--set,--index,--if,--output" "--set" 3 3' -a '(__vantero_formats_ask key)'
complete -c vantero-formats -n '__vantero_formats_has "config set" "--set"' -F
complete -c vantero-formats -n '__vantero_formats_in config set' -l set -d 'set this value; all arguments are files then' -x -a '(__vantero_formats_ask assignment)'
complete -c vantero-formats -n '__vantero_formats_in config set' -l index -d 'change this value of a repeated key, counting from the newest (0)' -x
complete -c vantero-formats -n '__vantero_formats_in config set' -l existing -d 'refuse to make a new section or a new key'
complete -c vantero-formats -n '__vantero_formats_in config set' -l if -d 'edit only files in which a value of the key is this one' -x -a '(__vantero_formats_ask assignment)'
complete -c vantero-formats -n '__vantero_formats_in config set' -l recursive -d 'look into folders, at any depth'
complete -c vantero-formats -n '__vantero_formats_in config set' -l output -d 'write the text to this file instead' -r -F
complete -c vantero-formats -n '__vantero_formats_in config set' -l in-place -d 'replace the input: the file is the old or the new one at any time, and keeps its mode'
complete -c vantero-formats -n '__vantero_formats_in config set' -l dry-run -d 'print what would change as a unified diff; write nothing'
complete -c vantero-formats -n '__vantero_formats_place "config add" "--add,--if,--output" "--add" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_place "config add" "--add,--if,--output" "--add" 2 2' -a '(__vantero_formats_ask section)'
complete -c vantero-formats -n '__vantero_formats_place "config add" "--add,--if,--output" "--add" 3 3' -a '(__vantero_formats_ask key)'
complete -c vantero-formats -n '__vantero_formats_has "config add" "--add"' -F
complete -c vantero-formats -n '__vantero_formats_in config add' -l add -d 'add this value; all arguments are files then' -x -a '(__vantero_formats_ask assignment)'
complete -c vantero-formats -n '__vantero_formats_in config add' -l existing -d 'refuse to make a new section or a new key'
complete -c vantero-formats -n '__vantero_formats_in config add' -l if -d 'edit only files in which a value of the key is this one' -x -a '(__vantero_formats_ask assignment)'
complete -c vantero-formats -n '__vantero_formats_in config add' -l recursive -d 'look into folders, at any depth'
complete -c vantero-formats -n '__vantero_formats_in config add' -l output -d 'write the text to this file instead' -r -F
complete -c vantero-formats -n '__vantero_formats_in config add' -l in-place -d 'replace the input: the file is the old or the new one at any time, and keeps its mode'
complete -c vantero-formats -n '__vantero_formats_in config add' -l dry-run -d 'print what would change as a unified diff; write nothing'
complete -c vantero-formats -n '__vantero_formats_place "config unset" "--key,--value,--index,--output" "--key" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_place "config unset" "--key,--value,--index,--output" "--key" 2 2' -a '(__vantero_formats_ask section)'
complete -c vantero-formats -n '__vantero_formats_place "config unset" "--key,--value,--index,--output" "--key" 3 3' -a '(__vantero_formats_ask key)'
complete -c vantero-formats -n '__vantero_formats_has "config unset" "--key"' -F
complete -c vantero-formats -n '__vantero_formats_in config unset' -l key -d 'remove this key; all arguments are files then' -x -a '(__vantero_formats_ask entry)'
complete -c vantero-formats -n '__vantero_formats_in config unset' -l value -d 'remove only lines with this value' -x
complete -c vantero-formats -n '__vantero_formats_in config unset' -l index -d 'remove only this value of a repeated key, counting from the newest (0)' -x
complete -c vantero-formats -n '__vantero_formats_in config unset' -l recursive -d 'look into folders, at any depth'
complete -c vantero-formats -n '__vantero_formats_in config unset' -l output -d 'write the text to this file instead' -r -F
complete -c vantero-formats -n '__vantero_formats_in config unset' -l in-place -d 'replace the input: the file is the old or the new one at any time, and keeps its mode'
complete -c vantero-formats -n '__vantero_formats_in config unset' -l dry-run -d 'print what would change as a unified diff; write nothing'
complete -c vantero-formats -n '__vantero_formats_place "config remove" "--section,--output" "--section" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_place "config remove" "--section,--output" "--section" 2 0' -a '(__vantero_formats_ask section)'
complete -c vantero-formats -n '__vantero_formats_has "config remove" "--section"' -F
complete -c vantero-formats -n '__vantero_formats_in config remove' -l section -d 'remove this section; all arguments are files then' -x -a '(__vantero_formats_ask section)'
complete -c vantero-formats -n '__vantero_formats_in config remove' -l outer-comments -d 'remove comments outside of sections, the header block included'
complete -c vantero-formats -n '__vantero_formats_in config remove' -l section-comments -d 'remove comments inside of sections'
complete -c vantero-formats -n '__vantero_formats_in config remove' -l empty-lines -d 'remove empty lines'
complete -c vantero-formats -n '__vantero_formats_in config remove' -l recursive -d 'look into folders, at any depth'
complete -c vantero-formats -n '__vantero_formats_in config remove' -l output -d 'write the text to this file instead' -r -F
complete -c vantero-formats -n '__vantero_formats_in config remove' -l in-place -d 'replace the input: the file is the old or the new one at any time, and keeps its mode'
complete -c vantero-formats -n '__vantero_formats_in config remove' -l dry-run -d 'print what would change as a unified diff; write nothing'
complete -c vantero-formats -n '__vantero_formats_place "config splice" "--output" "" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_place "config splice" "--output" "" 2 2' -F
complete -c vantero-formats -n '__vantero_formats_place "config splice" "--output" "" 3 3' -a '(__vantero_formats_ask section)'
complete -c vantero-formats -n '__vantero_formats_in config splice' -l recursive -d 'look into folders, at any depth'
complete -c vantero-formats -n '__vantero_formats_in config splice' -l output -d 'write the text to this file instead' -r -F
complete -c vantero-formats -n '__vantero_formats_in config splice' -l in-place -d 'replace the input: the file is the old or the new one at any time, and keeps its mode'
complete -c vantero-formats -n '__vantero_formats_in config splice' -l dry-run -d 'print what would change as a unified diff; write nothing'
complete -c vantero-formats -n '__vantero_formats_place "config merge" "--output" "" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_place "config merge" "--output" "" 2 2' -F
complete -c vantero-formats -n '__vantero_formats_in config merge' -l network -d 'keep IPADDR, HOSTNAME of the section "ethernet"'
complete -c vantero-formats -n '__vantero_formats_in config merge' -l motion -d 'keep motiondef, motioncheck, motion2_def, motion2_check of the section "eventdlite"'
complete -c vantero-formats -n '__vantero_formats_in config merge' -l time-tables -d 'keep edacttimetable, armcond_ac1_timetable, armcond_ac2_timetable, actions_timetable, messaging_timetable, messaging2_timetable, recording_timetable, coverimage_timetable of the section "eventdlite"'
complete -c vantero-formats -n '__vantero_formats_in config merge' -l output -d 'write the text to this file instead' -r -F
complete -c vantero-formats -n '__vantero_formats_in config merge' -l explain -d 'list what became of each kept entry, and which values of PREVIOUS are lost beside them; the text is then only written to --output'
complete -c vantero-formats -n '__vantero_formats_in config merge' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "config diff" "--by,--password-file,--entry-size-limit,--archive-size-limit,--total-size-limit,--entry-count-limit,--ratio-limit" "" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_place "config diff" "--by,--password-file,--entry-size-limit,--archive-size-limit,--total-size-limit,--entry-count-limit,--ratio-limit" "" 2 2' -F
complete -c vantero-formats -n '__vantero_formats_in config diff' -l by -d 'what tells which configurations belong together' -x -a 'address name'
complete -c vantero-formats -n '__vantero_formats_in config diff' -l password-file -d 'take the password of all archives that are read from the first line of this file, "-" for standard input' -r -F
complete -c vantero-formats -n '__vantero_formats_in config diff' -l entry-size-limit -d 'refuse larger entries of archives; the default is 256 MiB' -x
complete -c vantero-formats -n '__vantero_formats_in config diff' -l archive-size-limit -d 'refuse what exceeds this in one archive; the default is 1 GiB' -x
complete -c vantero-formats -n '__vantero_formats_in config diff' -l total-size-limit -d 'refuse what exceeds this in all archives together; no limit unless set, but 4 GiB where an archive is written, as that is held in memory' -x
complete -c vantero-formats -n '__vantero_formats_in config diff' -l entry-count-limit -d 'refuse archives with more entries; the default is 1000000' -x
complete -c vantero-formats -n '__vantero_formats_in config diff' -l ratio-limit -d 'refuse entries of more than 16 MiB that are compressed more than so many times; the default is 1000' -x
complete -c vantero-formats -n '__vantero_formats_in config diff' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "config write" "--output" "" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_in config write' -l output -d 'write the text to this file instead' -r -F
complete -c vantero-formats -n '__vantero_formats_place "config lint" "--severity,--password-file,--entry-size-limit,--archive-size-limit,--total-size-limit,--entry-count-limit,--ratio-limit" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in config lint' -l severity -d 'print no findings that are less severe' -x -a 'error warning note'
complete -c vantero-formats -n '__vantero_formats_in config lint' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in config lint' -l recursive -d 'look into folders, at any depth, and into archives'
complete -c vantero-formats -n '__vantero_formats_in config lint' -l password-file -d 'take the password of all archives that are read from the first line of this file, "-" for standard input' -r -F
complete -c vantero-formats -n '__vantero_formats_in config lint' -l entry-size-limit -d 'refuse larger entries of archives; the default is 256 MiB' -x
complete -c vantero-formats -n '__vantero_formats_in config lint' -l archive-size-limit -d 'refuse what exceeds this in one archive; the default is 1 GiB' -x
complete -c vantero-formats -n '__vantero_formats_in config lint' -l total-size-limit -d 'refuse what exceeds this in all archives together; no limit unless set, but 4 GiB where an archive is written, as that is held in memory' -x
complete -c vantero-formats -n '__vantero_formats_in config lint' -l entry-count-limit -d 'refuse archives with more entries; the default is 1000000' -x
complete -c vantero-formats -n '__vantero_formats_in config lint' -l ratio-limit -d 'refuse entries of more than 16 MiB that are compressed more than so many times; the default is 1000' -x
complete -c vantero-formats -n '__vantero_formats_place "config redact" "--key,--pattern,--output" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in config redact' -l key -d 'the values of this key are secrets, too; "*" stands for any characters' -x -a '(__vantero_formats_ask key)'
complete -c vantero-formats -n '__vantero_formats_in config redact' -l pattern -d 'what matches is a secret, too, or the first group of it' -x
complete -c vantero-formats -n '__vantero_formats_in config redact' -l report -d 'list on standard error what was replaced where: "FILE:LINE:COLUMN: reason: SECTION/KEY"'
complete -c vantero-formats -n '__vantero_formats_in config redact' -l recursive -d 'look into folders, at any depth'
complete -c vantero-formats -n '__vantero_formats_in config redact' -l output -d 'write the text to this file instead' -r -F
complete -c vantero-formats -n '__vantero_formats_in config redact' -l in-place -d 'replace the input: the file is the old or the new one at any time, and keeps its mode'
complete -c vantero-formats -n '__vantero_formats_in config redact' -l dry-run -d 'print what would change as a unified diff; write nothing'
complete -c vantero-formats -n '__vantero_formats_place "config collect" "--files-from,--on-error,--jobs,--source-password-file,--entry-size-limit,--archive-size-limit,--total-size-limit,--entry-count-limit,--ratio-limit,--output-archive,--password-file,--output-folder" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in config collect' -l recursive -d 'look into folders, at any depth'
complete -c vantero-formats -n '__vantero_formats_in config collect' -l files-from -d 'take further paths from the lines of this file, "-" for standard input, as they come' -r -F
complete -c vantero-formats -n '__vantero_formats_in config collect' -l null -d 'with --files-from: paths end with a zero byte, not with a line'
complete -c vantero-formats -n '__vantero_formats_in config collect' -l on-error -d 'end at the first failure, or pass it over (the default)' -x -a 'stop skip'
complete -c vantero-formats -n '__vantero_formats_in config collect' -l jobs -d 'read with so many threads; the default is one a processor' -x
complete -c vantero-formats -n '__vantero_formats_in config collect' -l source-password-file -d 'take the password of all archives that are read from the first line of this file, "-" for standard input' -r -F
complete -c vantero-formats -n '__vantero_formats_in config collect' -l entry-size-limit -d 'refuse larger entries of archives; the default is 256 MiB' -x
complete -c vantero-formats -n '__vantero_formats_in config collect' -l archive-size-limit -d 'refuse what exceeds this in one archive; the default is 1 GiB' -x
complete -c vantero-formats -n '__vantero_formats_in config collect' -l total-size-limit -d 'refuse what exceeds this in all archives together; no limit unless set, but 4 GiB where an archive is written, as that is held in memory' -x
complete -c vantero-formats -n '__vantero_formats_in config collect' -l entry-count-limit -d 'refuse archives with more entries; the default is 1000000' -x
complete -c vantero-formats -n '__vantero_formats_in config collect' -l ratio-limit -d 'refuse entries of more than 16 MiB that are compressed more than so many times; the default is 1000' -x
complete -c vantero-formats -n '__vantero_formats_in config collect' -l output-archive -d 'write the configurations to this archive' -r -F
complete -c vantero-formats -n '__vantero_formats_in config collect' -l password-file -d 'encrypt the archive that is written by the password in the first line of this file, "-" for standard input; without --output-archive it is that of the archives that are read' -r -F
complete -c vantero-formats -n '__vantero_formats_in config collect' -l output-folder -d 'write the configurations to this folder' -x -a '(__fish_complete_directories)'
complete -c vantero-formats -n '__vantero_formats_in config collect' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "config table" "--files-from,--on-error,--jobs,--password-file,--entry-size-limit,--archive-size-limit,--total-size-limit,--entry-count-limit,--ratio-limit,--key,--where" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in config table' -l recursive -d 'look into folders, at any depth'
complete -c vantero-formats -n '__vantero_formats_in config table' -l files-from -d 'take further paths from the lines of this file, "-" for standard input, as they come' -r -F
complete -c vantero-formats -n '__vantero_formats_in config table' -l null -d 'with --files-from: paths end with a zero byte, not with a line'
complete -c vantero-formats -n '__vantero_formats_in config table' -l on-error -d 'end at the first failure, or pass it over (the default)' -x -a 'stop skip'
complete -c vantero-formats -n '__vantero_formats_in config table' -l jobs -d 'read with so many threads; the default is one a processor' -x
complete -c vantero-formats -n '__vantero_formats_in config table' -l password-file -d 'take the password of all archives that are read from the first line of this file, "-" for standard input' -r -F
complete -c vantero-formats -n '__vantero_formats_in config table' -l entry-size-limit -d 'refuse larger entries of archives; the default is 256 MiB' -x
complete -c vantero-formats -n '__vantero_formats_in config table' -l archive-size-limit -d 'refuse what exceeds this in one archive; the default is 1 GiB' -x
complete -c vantero-formats -n '__vantero_formats_in config table' -l total-size-limit -d 'refuse what exceeds this in all archives together; no limit unless set, but 4 GiB where an archive is written, as that is held in memory' -x
complete -c vantero-formats -n '__vantero_formats_in config table' -l entry-count-limit -d 'refuse archives with more entries; the default is 1000000' -x
complete -c vantero-formats -n '__vantero_formats_in config table' -l ratio-limit -d 'refuse entries of more than 16 MiB that are compressed more than so many times; the default is 1000' -x
complete -c vantero-formats -n '__vantero_formats_in config table' -l key -d 'a column with the values of this key' -x -a '(__vantero_formats_ask entry)'
complete -c vantero-formats -n '__vantero_formats_in config table' -l where -d 'only configurations that meet this condition' -x -a '(__vantero_formats_ask condition)'
complete -c vantero-formats -n '__vantero_formats_in config table' -l csv -d 'print comma-separated values, as RFC 4180 has them'
complete -c vantero-formats -n '__vantero_formats_in config table' -l jsonl -d 'print a JSON object a line (JSON Lines), each as soon as it is known'
complete -c vantero-formats -n '__vantero_formats_in config table' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in version show' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in version compare' -s v -d 'print the component that decides below, with both ranges'
complete -c vantero-formats -n '__vantero_formats_in version compare' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in version check' -l model -d 'model name of the camera' -x -a '(__vantero_formats_ask model)'
complete -c vantero-formats -n '__vantero_formats_in version check' -l all-reasons -d 'print every rule that forbids the update'
complete -c vantero-formats -n '__vantero_formats_in version check' -l literal -d 'judge by the rules alone whatever the texts are, as programs do that ask the library whether an update is safe; without a model, as one that no rule names'
complete -c vantero-formats -n '__vantero_formats_in version check' -l configurations -d 'judge all cameras with configurations in these files, folders and archives; several behind it, or again' -r -F
complete -c vantero-formats -n '__vantero_formats_in version check' -l recursive -d 'look into folders, at any depth, and into archives'
complete -c vantero-formats -n '__vantero_formats_in version check' -l password-file -d 'take the password of all archives that are read from the first line of this file, "-" for standard input' -r -F
complete -c vantero-formats -n '__vantero_formats_in version check' -l entry-size-limit -d 'refuse larger entries of archives; the default is 256 MiB' -x
complete -c vantero-formats -n '__vantero_formats_in version check' -l archive-size-limit -d 'refuse what exceeds this in one archive; the default is 1 GiB' -x
complete -c vantero-formats -n '__vantero_formats_in version check' -l total-size-limit -d 'refuse what exceeds this in all archives together; no limit unless set, but 4 GiB where an archive is written, as that is held in memory' -x
complete -c vantero-formats -n '__vantero_formats_in version check' -l entry-count-limit -d 'refuse archives with more entries; the default is 1000000' -x
complete -c vantero-formats -n '__vantero_formats_in version check' -l ratio-limit -d 'refuse entries of more than 16 MiB that are compressed more than so many times; the default is 1000' -x
complete -c vantero-formats -n '__vantero_formats_in version check' -l models -d 'models of the cameras: lines "address,model" below a first line that says so, or a JSON object of address to model' -r -F
complete -c vantero-formats -n '__vantero_formats_in version check' -l available -d 'versions at hand, for the next hop of those that cannot get the version at once; as of version plan' -r -F
complete -c vantero-formats -n '__vantero_formats_in version check' -l csv -d 'print comma-separated values'
complete -c vantero-formats -n '__vantero_formats_in version check' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in version plan' -l model -d 'model name of the camera; without it every update has to be safe on every model' -x -a '(__vantero_formats_ask model)'
complete -c vantero-formats -n '__vantero_formats_in version plan' -l available -d 'versions at hand: versions, firmware packages, folders of packages, "-" for the lines of standard input; several behind it, or again' -r -F
complete -c vantero-formats -n '__vantero_formats_in version plan' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "version installable" "--model" "" 2 0' -F
complete -c vantero-formats -n '__vantero_formats_in version installable' -l model -d 'model name of the camera; without it every update has to be safe on every model' -x -a '(__vantero_formats_ask model)'
complete -c vantero-formats -n '__vantero_formats_in version installable' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "version rules" "" "" 1 0' -a '(__vantero_formats_ask rule)'
complete -c vantero-formats -n '__vantero_formats_in version rules' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "version sort" "" "" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_in version sort' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in version lint' -l severity -d 'print no findings that are less severe' -x -a 'error warning note'
complete -c vantero-formats -n '__vantero_formats_in version lint' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "firmware" "" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in firmware' -s v -d 'print the line and its form, too'
complete -c vantero-formats -n '__vantero_formats_in firmware' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in app-version' -l revision -d 'source revision; what stands before its first colon is left out' -x
complete -c vantero-formats -n '__vantero_formats_in app-version' -l debug -d 'a debug build'
complete -c vantero-formats -n '__vantero_formats_in app-version' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "alarms list" "" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in alarms list' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in alarms list' -l text-order -d 'keys and elements in the order of the text'
complete -c vantero-formats -n '__vantero_formats_place "alarms update" "" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in alarms update' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in alarms update' -l lines -d 'read an update a line'
complete -c vantero-formats -n '__vantero_formats_place "alarms lint" "--severity" "" 1 0' -F
complete -c vantero-formats -n '__vantero_formats_in alarms lint' -l severity -d 'print no findings that are less severe' -x -a 'error warning note'
complete -c vantero-formats -n '__vantero_formats_in alarms lint' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in alarms lint' -l updates -d 'the files are alarm updates'
complete -c vantero-formats -n '__vantero_formats_place "erdinfo write" "--id1,--id2,--number1,--number2,--time1,--time2,--text1,--text2,--text3" "" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l id1 -d 'first number' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l id2 -d 'second number' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l number1 -d 'first unsigned number' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l number2 -d 'second unsigned number' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l time1 -d 'first time' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l time2 -d 'second time' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l text1 -d 'first text, for 128 bytes' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l text2 -d 'second text, for 16 bytes' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l text3 -d 'third text, for 32 bytes' -x
complete -c vantero-formats -n '__vantero_formats_in erdinfo write' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_place "erdinfo show" "" "" 1 1' -F
complete -c vantero-formats -n '__vantero_formats_in erdinfo show' -l json -d 'print the result as one JSON value'
complete -c vantero-formats -n '__vantero_formats_in erdinfo layout' -l json -d 'print the result as one JSON value'
