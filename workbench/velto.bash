# Bash completion of velto: subcommands, options and their values, as its own help tells them, and
# installed models.

# Values in "--option TEXT:{a,b}" of a help text.
_velto_values() {  # HELP OPTION
  sed -nE "s/^ +(-[a-zA-Z],)?$2 [A-Z]+:\{([^}]*)\}.*/\2/p" <<< "$1" | tr ',' ' '
}

_velto() {
  local program=${1/#\~/$HOME} word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  local help
  COMPREPLY=()
  if ((COMP_CWORD == 1)); then
    help=$("$program" --help 2> /dev/null)
    local commands
    commands=$(sed -nE '/^Subcommands:/,$ s/^  ([a-z][a-z-]*).*/\1/p' <<< "$help")
    mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$word")
    return
  fi
  help=$("$program" "${COMP_WORDS[1]}" --help 2> /dev/null)
  # "--option=value" comes as three words.
  if [[ $word == = ]]; then
    word=
  elif [[ $before == = ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  if [[ $word == -* ]]; then
    local options
    options=$(grep -oE '^ +(-[a-zA-Z],)?--[a-z][a-z0-9-]*' <<< "$help" | grep -oE -- '--.*')
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  elif [[ $before == -d || $before == --model || $before == --compare ]]; then
    local models
    models=$("$program" models 2> /dev/null | awk 'NR > 1 && !seen[$1]++ { print $1 }')
    mapfile -t COMPREPLY < <(compgen -W "$models" -- "$word"; compgen -d -- "$word")
  elif [[ $before == --* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_velto_values "$help" "$before")" -- "$word")
  fi
}

# Where nothing fits, names of files.
complete -o default -F _velto velto
