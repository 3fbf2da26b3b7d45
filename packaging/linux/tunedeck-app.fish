# fish completion for tunedeck-app
complete -c tunedeck-app -f
set -l none 'not string match -q -- "--*" (commandline -opc)[2..]'
complete -c tunedeck-app -n $none -l show -d 'Open the window at once'
complete -c tunedeck-app -n $none -l quit -d 'Quit the running Tunedeck'
complete -c tunedeck-app -n $none -l status -d 'Print one line about the service'
complete -c tunedeck-app -n 'contains -- --status (commandline -opc)' -l json -d 'Print the status document'
complete -c tunedeck-app -n $none -l diagnostics -d 'Print the report for support'
complete -c tunedeck-app -n $none -l remove -d 'Remove the service and everything that starts Tunedeck automatically'
complete -c tunedeck-app -n $none -l after -x -a '(__fish_complete_pids)' -d 'Wait until that process has exited, then start'
complete -c tunedeck-app -n $none -l version -d 'Print the version'
complete -c tunedeck-app -n $none -l help -d 'Print a summary of the options'
