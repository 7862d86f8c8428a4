# mediactl itself tells what may stand next; where it knows nothing, files may.
function __mediactl_next
    set -l next (mediactl complete (commandline -opc)[2..] (commandline -ct) 2> /dev/null)
    if set -q next[1]
        printf '%s\n' $next
    else
        __fish_complete_path (commandline -ct)
    end
end
complete -c mediactl -f -a '(__mediactl_next)'
