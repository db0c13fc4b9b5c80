# Completion of tolmictl for bash.
# shellcheck shell=bash

_tolmictl() {
  local current=${COMP_WORDS[COMP_CWORD]} words='--help --version'
  if ((COMP_CWORD == 1)); then
    words+=' press release start stop toggle status studio settings doctor quit'
  elif [[ ${COMP_WORDS[1]} == status ]]; then
    words='--follow --json'
  else
    words=''
  fi
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _tolmictl tolmictl
