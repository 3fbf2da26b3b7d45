# XFCE: xfwm4 and the panel with its tray (StatusNotifierItem). Sourced by tools/lib/desktop.
# shellcheck shell=bash disable=SC2034,SC2154 # it shares its variables with that script

programs=(Xvfb xfwm4 xfce4-panel xwininfo)

start_desktop() {
    local xfconfd settings=$work/config/xfce4/xfconf/xfce-perchannel-xml
    xfconfd=$(find /usr/lib -path '*/xfconf/xfconfd' -print -quit)
    [ -n "$xfconfd" ] || unable "xfconfd is missing; ./tools/desktops installs it"
    mkdir -p "$settings"
    # A bar at the top with a free area, and the tray at its right end.
    cat >"$settings/xfce4-panel.xml" <<-'END'
	<?xml version="1.0" encoding="UTF-8"?>
	<channel name="xfce4-panel" version="1.0">
	  <property name="configver" type="int" value="2"/>
	  <property name="panels" type="array">
	    <value type="int" value="1"/>
	    <property name="panel-1" type="empty">
	      <property name="position" type="string" value="p=6;x=0;y=0"/>
	      <property name="length" type="uint" value="100"/>
	      <property name="position-locked" type="bool" value="true"/>
	      <property name="size" type="uint" value="28"/>
	      <property name="plugin-ids" type="array">
	        <value type="int" value="1"/>
	        <value type="int" value="2"/>
	        <value type="int" value="3"/>
	      </property>
	    </property>
	  </property>
	  <property name="plugins" type="empty">
	    <property name="plugin-1" type="string" value="tasklist"/>
	    <property name="plugin-2" type="string" value="separator">
	      <property name="expand" type="bool" value="true"/>
	      <property name="style" type="uint" value="0"/>
	    </property>
	    <property name="plugin-3" type="string" value="systray"/>
	  </property>
	</channel>
	END
    start_x_server
    start xfconfd env XDG_CONFIG_HOME="$work/config" "$xfconfd"
    await xfconfd has_bus_name org.xfce.Xfconf
    start xfwm4 xfwm4 --compositor=off
    [ "$tray" = no ] || start_panel
}
start_panel() {
    start xfce4-panel env XDG_CONFIG_HOME="$work/config" xfce4-panel --disable-wm-check
    await xfce4-panel has_bus_name org.kde.StatusNotifierWatcher
}
