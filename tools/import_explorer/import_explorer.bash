# Completion of import_explorer in bash, loaded by bash-completion or by `source`.

_import_explorer() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
    # Bash splits --format=json into three words.
    if [[ $current == = ]]; then
        current=
    elif [[ $option == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    local words
    case $option in
        --format) words="text json sarif" ;;
        --packages) words="on off follow" ;;
        --feature) words="on off" ;;
        *) words= ;;
    esac
    if [[ -z $words && $current == -* && " ${COMP_WORDS[*]:1:COMP_CWORD-1} " != *" -- "* ]]; then
        words="--feature --fix --format --help --json --lines --packages --quiet --scopes --unused --version"
    fi
    if [[ $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    # Quotes file names if necessary; only works during completion.
    compopt -o filenames 2>/dev/null
    local ignored='!*.import'
    [[ " ${COMP_WORDS[*]} " != *" --lines "* ]] || ignored=
    mapfile -t COMPREPLY < <(compgen -d -- "$current"; compgen -f -X "$ignored" -- "$current")
}

complete -F _import_explorer import_explorer
