#compdef tmxctl
# Completion of tmxctl for zsh; "tmxctl complete" knows paths, selectors and values.

_tmxctl_item() {
  local -a items
  items=("${(@f)$(tmxctl complete -- "${(Q)PREFIX}" 2>/dev/null)}")
  # What is typed in quotes stays so; elsewhere brackets are quoted for the user.
  [[ -z $items ]] || compadd -S '' -- $items
}

_arguments -S \
  '--as=[class of the caller]:class:(admin operator user onvif debug)' \
  '(-c --commit)'{-c,--commit}'[run the commits that the writes wait for]' \
  '--dry-run[load writes nothing]' \
  '--json[answers as JSON]' \
  '(-q --quiet)'{-q,--quiet}'[values only]' \
  '(-r --raw)'{-r,--raw}'[values as they travel]' \
  '(-s --socket)'{-s,--socket=}'[socket of the daemon]:socket:_files' \
  '(-t --timeout)'{-t,--timeout=}'[time for one request]:seconds:' \
  '(-i --interval)'{-i,--interval=}'[time between two reads of watch]:seconds:' \
  '1: :{ _values command get set list tree show dump load diff watch; _tmxctl_item }' \
  '*: :{ [[ $words[2] == (load|diff) ]] && _files || _tmxctl_item }'
