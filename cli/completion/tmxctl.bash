# Completion of tmxctl for bash; "tmxctl complete" knows paths, selectors and values. A path with a selector is completed
# when it stands in quotes: tmxctl 'network.destination(2).h<TAB>

_tmxctl() {
  local previous=$3 i command=""
  local commands="get set list tree show dump load diff watch"
  local flags="--as --commit --dry-run --interval --json --quiet --raw --socket --timeout --help --version"
  # bash ends words at "=" and "(" too; here a word is what stands between two blanks.
  local line=${COMP_LINE:0:COMP_POINT}
  local word=${line##*[[:space:]]} quote=""
  [[ $word != [\"\']* ]] || quote=${word:0:1}
  word=${word#"$quote"}
  COMPREPLY=()

  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      get | set | list | tree | show | dump | load | diff | watch) command=${COMP_WORDS[i]} ;;
    esac
  done

  case $previous in
    --as) mapfile -t COMPREPLY < <(compgen -W "admin operator user onvif debug" -- "$word") ;;
    -s | --socket) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
    -t | --timeout | -i | --interval) ;;
    *)
      if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$flags" -- "$word")
      elif [[ $command == load || $command == diff ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
      else
        [[ -n $command || -n $quote ]] || mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$word")
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(tmxctl complete -- "$word" 2>/dev/null)
        # Without a quote bash puts the answer behind the last "=" only.
        if [[ -z $quote && $word == *=* ]]; then COMPREPLY=("${COMPREPLY[@]#"${word%=*}="}"); fi
        compopt -o nospace 2>/dev/null
      fi
      ;;
  esac
}

complete -F _tmxctl tmxctl
