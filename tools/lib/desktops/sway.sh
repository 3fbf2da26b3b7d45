# Sway, a tiling Wayland compositor, with waybar as the tray (StatusNotifierItem) and XWayland. Sourced by
# tools/lib/desktop.
# shellcheck shell=bash disable=SC2034,SC2154 # it shares its variables with that script

programs=(sway swaymsg waybar Xwayland)
xwayland=enable

start_desktop() {
    local unprivileged=()
    cat >"$work/sway.config" <<-END
	xwayland $xwayland
	output HEADLESS-1 resolution $screen scale $scale
	exec echo "\$SWAYSOCK \$WAYLAND_DISPLAY \$DISPLAY" >$work/sway.names
	END
    # Sway refuses to run as a user who could become root: give root another name.
    [ "$EUID" -ne 0 ] || unprivileged=(unshare --map-user=1000 --map-group=1000)
    start sway "${unprivileged[@]}" env WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman sway -c "$work/sway.config"
    await sway grep -q wayland "$work/sway.names"
    read -r SWAYSOCK WAYLAND_DISPLAY DISPLAY <"$work/sway.names"
    WAYLAND_DISPLAY=$work/run/$WAYLAND_DISPLAY
    export SWAYSOCK WAYLAND_DISPLAY XDG_CURRENT_DESKTOP=sway XDG_SESSION_TYPE=wayland
    [ -z "$DISPLAY" ] && unset DISPLAY || export DISPLAY
    unset QT_SCALE_FACTOR # the output is scaled
    [ "$tray" = no ] || start_waybar
}
start_waybar() {
    cat >"$work/waybar.config" <<-'END'
	{ "layer": "top", "position": "top", "height": 28, "modules-left": ["sway/workspaces"], "modules-right": ["tray"],
	  "tray": { "icon-size": 20 } }
	END
    start waybar waybar -c "$work/waybar.config"
    await waybar has_bus_name org.kde.StatusNotifierWatcher
}
