# Completion of tmxctl for fish; "tmxctl complete" knows paths, selectors and values.
complete -c tmxctl -f -a '(tmxctl complete -- (commandline -ct | string trim -c "\'\"") 2>/dev/null)'
complete -c tmxctl -n __fish_use_subcommand -a 'get set list tree show dump load diff watch'
complete -c tmxctl -n '__fish_seen_subcommand_from load diff' -F
complete -c tmxctl -l as -x -a 'admin operator user onvif debug' -d 'class of the caller'
complete -c tmxctl -s c -l commit -d 'run the commits that the writes wait for'
complete -c tmxctl -l dry-run -d 'load writes nothing'
complete -c tmxctl -s i -l interval -x -d 'seconds between two reads of watch'
complete -c tmxctl -l json -d 'answers as JSON'
complete -c tmxctl -s q -l quiet -d 'values only'
complete -c tmxctl -s r -l raw -d 'values as they travel'
complete -c tmxctl -s s -l socket -r -d 'socket of the daemon'
complete -c tmxctl -s t -l timeout -x -d 'seconds for one request'
