# Completion of tmxctl for bash. The paths come from the daemon's own list, read through "tmxctl list -q".
# A path with a selector is completed when it stands in quotes: tmxctl 'network.destination(2).h<TAB>

_tmxctl_paths() {
  local current=$1 options=("${@:2}") bare front typed path layer
  # The list knows no selectors: look up without them, and keep what was typed in front of the last layer.
  bare=$(sed 's/([^)]*)//g' <<<"$current")
  front=${current%"${current##*.}"}
  typed=${bare##*.}
  while IFS= read -r path; do
    [[ $path == "$bare"* ]] || continue
    layer=${path:$((${#bare} - ${#typed}))}
    [[ $layer == *.* ]] && layer=${layer%%.*}.
    [[ ${COMPREPLY[*]: -1} == "$front$layer" ]] || COMPREPLY+=("$front$layer")
  done < <(tmxctl "${options[@]}" list -q 2>/dev/null)
  compopt -o nospace 2>/dev/null
}

_tmxctl() {
  local previous=$3 i command="" options=()
  local commands="get set list tree show dump load watch"
  local flags="--as --commit --interval --json --quiet --raw --socket --timeout --help --version"
  # bash ends words at "=" and "(" too; here a word is what stands between two blanks.
  local line=${COMP_LINE:0:COMP_POINT}
  local current=${line##*[[:space:]]}
  current=${current#[\"\']}
  COMPREPLY=()

  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      -s | --socket) options=(-s "${COMP_WORDS[i + 1]}") ;;
      get | set | list | tree | show | dump | load | watch) command=${COMP_WORDS[i]} ;;
    esac
  done

  case $previous in
    --as) mapfile -t COMPREPLY < <(compgen -W "admin operator user onvif debug" -- "$current") ;;
    -s | --socket) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
    -t | --timeout | -i | --interval) ;;
    *)
      if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$flags" -- "$current")
      elif [[ $command == load ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
      elif [[ $current != *=* ]]; then
        [[ -n $command ]] || mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
        _tmxctl_paths "$current" "${options[@]}"
      fi
      ;;
  esac
}

complete -F _tmxctl tmxctl
