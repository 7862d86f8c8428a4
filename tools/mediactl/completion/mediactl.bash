# mediactl itself tells what may stand next.
_mediactl() {
    local IFS=$'\n'
    mapfile -t COMPREPLY < <(
        compgen -W "$("$1" complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2> /dev/null)" -- "$2")
}
complete -o default -F _mediactl mediactl
