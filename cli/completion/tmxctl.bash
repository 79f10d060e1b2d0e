# Completion of tmxctl for bash. The paths come from the daemon's own list, read through "tmxctl list -q".

_tmxctl_paths() {
  local current=$1 options=("${@:2}") bare front path layer
  # The list knows no selectors: look up without them, and keep what was typed in front of the last layer.
  bare=$(sed 's/([^)]*)//g' <<<"$current")
  front=${current%"${bare##*.}"}
  while IFS= read -r path; do
    [[ $path == "$bare"* ]] || continue
    layer=${path:$((${#bare} - ${#bare##*.}))}
    if [[ ${bare##*.} != *.* && $layer == *.* ]]; then
      COMPREPLY+=("$front${layer%%.*}.")
    else
      COMPREPLY+=("$front$layer")
    fi
  done < <(tmxctl "${options[@]}" list -q 2>/dev/null)
  compopt -o nospace
}

_tmxctl() {
  local current=$2 previous=$3 commands="get set list tree show dump load watch" i command=""
  local options=()
  COMPREPLY=()
  # bash takes "=" and "(" for ends of words; the path is what stands between two blanks.
  local line=${COMP_LINE:0:COMP_POINT}
  current=${line##*[[:space:]]}

  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      -s | --socket) options=(-s "${COMP_WORDS[i + 1]}") ;;
      get | set | list | tree | show | dump | load | watch) command=${COMP_WORDS[i]} ;;
    esac
  done

  case $previous in
    --as) mapfile -t COMPREPLY < <(compgen -W "admin operator user onvif debug" -- "$current") && return ;;
    -s | --socket) mapfile -t COMPREPLY < <(compgen -f -- "$current") && return ;;
    -t | --timeout | -i | --interval) return ;;
  esac
  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--as --commit --interval --json --quiet --raw --socket --timeout --help --version" \
      -- "$current")
  elif [[ $command == load ]]; then
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  elif [[ $current != *=* ]]; then
    [[ -n $command ]] || mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
    _tmxctl_paths "$current" "${options[@]}"
  fi
}

complete -F _tmxctl tmxctl
