# fish completion for zohpc(1): commands are asked from the program, options read from the help of the command

function __zohpc_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l program $words[1]
    set -l first 2
    test "$words[2]" = help; and set first 3
    set -l typed
    test (count $words) -ge $first; and set typed (string join ' ' -- $words[$first..-1])
    set -l command
    set -l next
    for name in ($program --list-commands 2>/dev/null)
        if string match -q -- "$name *" "$typed "
            set command $name
        else if test -z "$typed"
            set -a next (string split -m1 ' ' -- $name)[1]
        else if string match -q -- "$typed *" $name
            set -a next (string replace -- "$typed " '' $name)
        end
    end
    if test -z "$command"
        test (count $words) -eq 1; and set -a next help --help --version
        test (count $words) -ge $first; and set -a next --help
        string join \n -- $next | sort -u
        return
    end

    # "  -o, --output <file>  Write to <file>.": an option and what its value is called, or "<this|or|that>"
    set -l previous $words[-1]
    set -l options
    for line in ($program (string split ' ' -- $command) --help 2>/dev/null)
        set -l option (string match -r -- '^  (?:-[[:alnum:]], )?(--[[:alnum:]-]+)' $line)[2]
        test -n "$option"; or continue
        set -l short (string match -r -- '^  (-[[:alnum:]]), ' $line)[2]
        set -l value (string match -r -- '^  (?:-[[:alnum:]], )?--[[:alnum:]-]+ <([^>]*)>' $line)[2]
        set -a options $option\t(string replace -r -- '^  [^<>]*?--[[:alnum:]-]+( <[^>]*>)? *' '' $line)
        if test -n "$value"; and contains -- $previous $option $short
            if string match -q 'file*' -- $value
                __fish_complete_path $current
            else if test "$value" = CODE
                $program (string split ' ' -- $command) $option 2>/dev/null | string replace -r ' .*' ''
            else if test "$value" = mode
                $program (string split ' ' -- $command) --list-modes 2>/dev/null
            else if string match -q '*|*' -- $value
                string split '|' -- $value
            end
            return
        end
    end
    if string match -q -- '-*' $current
        string join \n -- $options
    else if not string match -q 'hosts*' -- $command
        __fish_complete_path $current
    end
end

complete -c zohpc -f -a '(__zohpc_complete)'
