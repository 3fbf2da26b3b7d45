# Sway without XWayland. Sourced by tools/lib/desktop.
# shellcheck shell=bash disable=SC2034,SC2154 # it shares its variables with that script

# shellcheck source=sway.sh
. "$desktops/sway.sh"
xwayland=disable
