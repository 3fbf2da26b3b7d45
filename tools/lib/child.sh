# Sourced by the wrappers that run a command and clean up after it.
# shellcheck shell=bash

# Runs a command as a child, hands SIGTERM, SIGINT and SIGHUP on to it as SIGTERM, returns its status.
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
