# What bash offers after `exflate`.
_exflate() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} subcommand=run
    COMPREPLY=()
    if [ "$COMP_CWORD" -gt 1 ]; then
        case ${COMP_WORDS[1]} in
            check | report | list | replay | dialog) subcommand=${COMP_WORDS[1]} ;;
        esac
    fi

    case $previous in
        --format)
            mapfile -t COMPREPLY < <(compgen -W 'text json junit' -- "$current")
            return ;;
        --out-dir)
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            compopt -o filenames 2>/dev/null
            return ;;
        -o | --output | --journal | --picture)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            compopt -o filenames 2>/dev/null
            return ;;
        --animation | --comp | --layer | --max-growth | --script-time | -j | --jobs | --prefix | --scale | --click | --type) return ;;
    esac

    local selection='--animation --comp --layer --script-time'
    local answers='--copy-attributes --discard-attributes --delete-source --keep-in-comp --prefix --prepend-name --fix-random'
    local options
    case $subcommand in
        run) options="-o --output --out-dir -i --in-place -j --jobs --recursive --strict --only-exact --max-growth --journal --dialog
                      $selection $answers" ;;
        check) options="--format --prove $selection $answers" ;;
        report) options="-o --output $selection $answers" ;;
        list) options='--json' ;;
        replay) options='' ;;
        dialog) options='--picture --scale --first-use --click --type' ;;
    esac
    options+=' -h --help'
    [ "$COMP_CWORD" -gt 1 ] || options+=' --version'

    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    elif [ "$subcommand" = replay ]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        compopt -o filenames 2>/dev/null
    elif [ "$subcommand" != dialog ]; then
        mapfile -t COMPREPLY < <(
            [ "$COMP_CWORD" -gt 1 ] || compgen -W 'run check report list replay dialog' -- "$current"
            compgen -d -- "$current"
            for ending in json lottie tgs; do compgen -f -X "!*.$ending" -- "$current"; done)
        compopt -o filenames 2>/dev/null
    fi
}
complete -F _exflate exflate
