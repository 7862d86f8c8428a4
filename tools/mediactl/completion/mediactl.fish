# mediactl itself tells what may stand next.
complete -c mediactl -a '(mediactl complete (commandline -opc)[2..] (commandline -ct) 2> /dev/null)'
