# For scripts that run a command and clean up afterwards. Sourced, never run.
# shellcheck shell=bash

# Runs a command as a child process, forwards SIGTERM, SIGINT and SIGHUP to it as SIGTERM, and returns its status.
run_child() {
    local child status
    "$@" <&0 &
    child=$!
    trap 'kill -TERM "$child" 2>/dev/null' TERM INT HUP
    while :; do
        wait "$child"
        status=$?
        kill -0 "$child" 2>/dev/null || break
    done
    trap - TERM INT HUP
    return "$status"
}
