# bash completion for tunedeck-app
_tunedeck_app() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    case $before in
    --status) mapfile -t COMPREPLY < <(compgen -W "--json" -- "$word") ;;
    --json) mapfile -t COMPREPLY < <(compgen -W "--status --checkup" -- "$word") ;;
    --checkup) mapfile -t COMPREPLY < <(compgen -W "--json --online" -- "$word") ;;
    --online) mapfile -t COMPREPLY < <(compgen -W "--checkup" -- "$word") ;;
    --after) mapfile -t COMPREPLY < <(compgen -W "$(ps -eo pid= 2>/dev/null)" -- "$word") ;;
    *)
        [ "$COMP_CWORD" -eq 1 ] || return 0
        mapfile -t COMPREPLY < <(compgen -W "--show --quit --status --json --checkup --online --diagnostics --remove --after --version --help" -- "$word")
        ;;
    esac
}
complete -F _tunedeck_app tunedeck-app
