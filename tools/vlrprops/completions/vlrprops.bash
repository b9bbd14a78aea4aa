# bash completion for vlrprops: names and options as the program itself tells them, names in any case.
_vlrprops() {
    local program=$1 word=$2 before=$3
    if [[ $before == = || ${COMP_WORDS[COMP_CWORD]} == = ]]; then
        COMPREPLY=($(compgen -W typed -- "$word"))
    elif [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "$("$program" --help 2>/dev/null | grep -oE -e '--[a-z-]+')" -- "$word"))
    else
        COMPREPLY=($("$program" --list 2>/dev/null | grep -i -e "^$word"))
    fi
}
complete -F _vlrprops vlrprops
