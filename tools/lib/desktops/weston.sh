# Weston, the reference Wayland compositor, with XWayland. It has no tray and no input devices. Sourced by
# tools/lib/desktop.
# shellcheck shell=bash disable=SC2034,SC2154 # it shares its variables with that script

programs=(weston Xwayland)

start_desktop() {
    WAYLAND_DISPLAY=$work/run/wayland-0
    start weston weston --backend=headless-backend.so --use-pixman --xwayland --socket=wayland-0 --idle-time=0 \
        --width="${screen%x*}" --height="${screen#*x}"
    await weston test -S "$WAYLAND_DISPLAY"
    await weston grep -q 'listening on display' "$work/weston.log"
    DISPLAY=$(sed -n 's/.*listening on display \(:[0-9]*\).*/\1/p' "$work/weston.log")
    export WAYLAND_DISPLAY DISPLAY XDG_SESSION_TYPE=wayland
}
