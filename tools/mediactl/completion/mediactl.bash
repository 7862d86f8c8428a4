# mediactl itself tells what may stand next.
_mediactl() {
    local word
    COMPREPLY=()
    while IFS= read -r word; do
        # A name on the card may hold anything: quoted, it stays a name.
        printf -v word %q "$word"
        COMPREPLY+=("$word")
    done < <("$1" complete "${COMP_WORDS[@]:1:COMP_CWORD-1}" "$2" 2> /dev/null)
}
complete -o default -F _mediactl mediactl
