# bash completion for tobarine-cli
_tobarine_cli() {
  local word=${COMP_WORDS[COMP_CWORD]} command
  for command in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $command in
      h2l | eqsl | l2h | adif2zlog | info)
        if [[ $word == -* ]]; then
          COMPREPLY=($(compgen -W '--output --kind --time --keep-intermediate --report --json --quiet --set --help' -- "$word"))
        else
          compopt -o filenames
          COMPREPLY=($(compgen -f -- "$word"))
        fi
        return ;;
      lookup) COMPREPLY=($(compgen -W 'calls codes jcc' -- "$word")); return ;;
      build) COMPREPLY=($(compgen -W 'dxcc jcc codes --from --output --force' -- "$word")); return ;;
      jarl) COMPREPLY=($(compgen -W 'check download --timeout --url' -- "$word")); return ;;
    esac
  done
  COMPREPLY=($(compgen -W 'h2l eqsl l2h adif2zlog info lookup build jarl --home --set --report --json --quiet --version --help' -- "$word"))
}
complete -F _tobarine_cli tobarine-cli
