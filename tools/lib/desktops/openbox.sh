# Openbox, with trayer as the tray (XEmbed). Sourced by tools/lib/desktop.
# shellcheck shell=bash disable=SC2034,SC2154 # it shares its variables with that script

programs=(Xvfb openbox trayer xwininfo)

start_desktop() {
    start_x_server
    start openbox openbox --sm-disable
    [ "$tray" = no ] || start_trayer
}
start_trayer() {
    start trayer trayer --edge top --align right --widthtype request --height 32 --SetDockType true --expand true
    await trayer xwininfo -name panel
}
