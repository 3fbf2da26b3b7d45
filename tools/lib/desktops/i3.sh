# i3, which tiles its windows, with the tray of i3bar (XEmbed). Sourced by tools/lib/desktop.
# shellcheck shell=bash disable=SC2034,SC2154 # it shares its variables with that script

programs=(Xvfb i3 i3bar xwininfo)

start_desktop() {
    {
        printf '# i3 config file (v4)\nfont pango:DejaVu Sans 10\n'
        [ "$tray" = no ] || printf 'bar {\n    position top\n}\n'
    } >"$work/i3.config"
    start_x_server
    start i3 i3 -c "$work/i3.config"
    [ "$tray" = no ] || await i3 shows_bar
}
shows_bar() { xwininfo -root -tree | grep -q i3bar; }
