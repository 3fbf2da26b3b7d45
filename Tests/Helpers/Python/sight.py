"""What a user sees of the application on a desktop, and what they do with the mouse and the keyboard."""
import atexit
import collections
import json
import os
import subprocess
import time

import Xlib.display
import Xlib.ext.xtest
import Xlib.X
import Xlib.XK
from gi.repository import GLib

import desktop

Rect = collections.namedtuple("Rect", "x y width height")
Window = collections.namedtuple("Window", "title frame")  # the frame includes the title bar
Control = collections.namedtuple("Control", "name rect scrolls focused")

Facts = collections.namedtuple("Facts", "name role shows focused rect children")

LEFT, RIGHT = 1, 3
FOCUSED = 1 << 12  # ATSPI_STATE_FOCUSED


def contains(outer, inner):
    return (outer.x <= inner.x and outer.y <= inner.y and inner.x + inner.width <= outer.x + outer.width and
            inner.y + inner.height <= outer.y + outer.height)


def controls(screen):
    """The buttons, switches and links of the visible windows as (window, its rectangle, controls).

    Rectangles are on the screen; a Wayland window believes that it is at the origin.
    """
    accessible, component = "org.a11y.atspi.Accessible", "org.a11y.atspi.Component"
    title = GLib.Variant("(ss)", (accessible, "Name"))
    on_screen = GLib.Variant("(u)", (0,))
    interactive = {"push button", "check box", "button", "link", "radio button", "toggle button"}

    def facts(place):
        name, role, state, extents, children = screen.calls([
            (*place, "org.freedesktop.DBus.Properties", "Get", title), (*place, accessible, "GetRoleName", None),
            (*place, accessible, "GetState", None), (*place, component, "GetExtents", on_screen),
            (*place, accessible, "GetChildren", None)])
        return Facts(name or "", role, bool(state and state[0] & desktop.SHOWING), bool(state and state[0] & FOCUSED),
                     Rect(*extents) if extents else None, children or [])

    def visit(place, window, scrolls, found):
        name, role, shows, focused, rect, children = facts(place)
        if not shows or rect is None:
            return
        if role in interactive and rect.width > 0:
            found.append(Control(name, rect, scrolls, focused))
        for child in children:
            visit(child, window, scrolls or (role == "panel" and contains(window, rect)), found)

    result = []
    for program in facts(("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")).children:
        application = facts(program)
        for window in application.children if application.name == "Tunedeck" else []:
            found = []
            name, _, shows, _, rect, children = facts(window)
            for child in children if shows else []:
                visit(child, rect, False, found)
            if shows:
                result.append((name, rect, found))
    return result


class XDesktop:
    """An X server, or XWayland where the compositor doesn't show its windows otherwise."""

    def __init__(self, display=None, shadow=0):
        self.shadow = shadow  # how much of a frame is invisible, on each side
        self.display = Xlib.display.Display(display)
        self.root = self.display.screen().root
        self.size = self.root.get_geometry()

    def atom(self, name):
        return self.display.intern_atom(name)

    def top_levels(self):
        """Each mapped child of the root with its rectangle."""
        for child in self.root.query_tree().children:
            try:
                shape = child.get_geometry()
                if child.get_attributes().map_state == Xlib.X.IsViewable and shape.width > 1:
                    yield child, Rect(shape.x, shape.y, shape.width, shape.height)
            except Xlib.error.XError:
                pass  # it is gone

    def family(self, window):
        try:
            children = window.query_tree().children
        except Xlib.error.XError:
            return
        yield window
        for child in children:
            yield from self.family(child)

    def is_ours(self, window):
        try:
            return (window.get_wm_class() or ("",))[-1] == "Tunedeck"
        except Xlib.error.XError:
            return False

    def absolute(self, window):
        at, shape = window.translate_coords(self.root, 0, 0), window.get_geometry()
        return Rect(-at.x, -at.y, shape.width, shape.height)

    def ours(self):
        """Each visible window of the application that isn't a menu, with its frame and whether a window manager handles it."""
        for top, frame in self.top_levels():
            for window in self.family(top):
                try:
                    if (self.is_ours(window) and window.get_attributes().map_state == Xlib.X.IsViewable and
                            window.get_full_property(self.atom("_XEMBED_INFO"), Xlib.X.AnyPropertyType)):
                        managed = window.get_full_property(self.atom("WM_STATE"), Xlib.X.AnyPropertyType)
                        yield window, window.get_wm_name() or "", frame, managed is not None
                except Xlib.error.XError:
                    pass  # it is gone

    def windows(self):
        inset = self.shadow
        return [Window(title, Rect(frame.x + inset, frame.y + inset, frame.width - 2 * inset,
                                                        frame.height - 2 * inset))
                for _, title, frame, managed in self.ours() if managed]

    def states(self):
        """What window managers and task bars know about the application's windows."""
        atoms = [atom for window, _, _, managed in self.ours() if managed
                 for atom in window.get_full_property(self.atom("_NET_WM_STATE"), Xlib.X.AnyPropertyType).value]
        return {self.display.get_atom_name(atom) for atom in atoms}

    def free_area(self):
        """The screen without the bars."""
        found = self.root.get_full_property(self.atom("_NET_WORKAREA"), Xlib.X.AnyPropertyType)
        return Rect(*found.value[:4]) if found else Rect(0, 0, self.size.width, self.size.height)

    def menus(self):
        """The number of menus of any program: windows that no window manager handles."""
        return sum(1 for top, frame in self.top_levels() if frame.height > 40 and self.is_menu(top))

    def is_menu(self, window):
        try:
            return (window.get_attributes().override_redirect and
                    window.get_full_property(self.atom("_NET_WM_WINDOW_TYPE"), Xlib.X.AnyPropertyType) is not None)
        except Xlib.error.XError:
            return False  # it is gone

    def tray_window(self):
        """The rectangle of the application's icon in an XEmbed tray."""
        for window, _, _, managed in self.ours():
            if not managed:
                try:
                    return self.absolute(window)
                except Xlib.error.XError:
                    pass  # it is gone
        return None

    def click(self, x, y, button=LEFT):
        Xlib.ext.xtest.fake_input(self.display, Xlib.X.MotionNotify, x=int(x), y=int(y))
        for event in (Xlib.X.ButtonPress, Xlib.X.ButtonRelease):
            Xlib.ext.xtest.fake_input(self.display, event, button)
        self.display.sync()

    def hold(self, name, seconds):
        """Holds a key down; the server repeats it."""
        code = self.display.keysym_to_keycode(Xlib.XK.string_to_keysym(name))
        Xlib.ext.xtest.fake_input(self.display, Xlib.X.KeyPress, code)
        self.display.sync()
        time.sleep(seconds)
        Xlib.ext.xtest.fake_input(self.display, Xlib.X.KeyRelease, code)
        self.display.sync()

    def key(self, name):
        self.hold(name, 0)

    def picture(self, path):
        # Under a Wayland compositor the root shows nothing: take the application's window.
        targets = ["root"]
        if "WAYLAND_DISPLAY" in os.environ:
            targets = [hex(window.id) for window, _, _, managed in self.ours() if managed]
        for target in targets[:1]:
            subprocess.run(["import", "-window", target, path], check=False)


class SwayDesktop:
    """Sway reports its windows, those of XWayland as well, and moves the pointer."""

    def __init__(self):
        self.size = Rect(**self.ask("get_outputs")[0]["rect"])
        # A keyboard for as long as this runs: one that comes and goes with each key would lose some.
        self.keyboard = subprocess.Popen(["wtype", "-s", "86400000"])
        atexit.register(self.keyboard.kill)

    @staticmethod
    def ask(what):
        return json.loads(subprocess.run(["swaymsg", "-r", "-t", what], capture_output=True, check=True).stdout)

    @staticmethod
    def nodes(node):
        yield node
        for child in node["nodes"] + node["floating_nodes"]:
            yield from SwayDesktop.nodes(child)

    def windows(self):
        found = []
        for node in self.nodes(self.ask("get_tree")):
            names = node.get("app_id") or (node.get("window_properties") or {}).get("class", "")
            if names.lower() in ("tunedeck", "com.brightfold.tunedeck.menu") and node.get("visible"):
                body, title = node["rect"], node["deco_rect"]["height"]
                frame = Rect(body["x"], body["y"] - title, body["width"], body["height"] + title)
                found.append(Window(node["name"] or "", frame))
        return found

    def free_area(self):
        """The workspace: the output without the bars."""
        return Rect(**next(each["rect"] for each in self.ask("get_workspaces") if each["focused"]))

    def click(self, x, y, button=LEFT):
        for command in (f"cursor set {int(x)} {int(y)}", f"cursor press button{button}", f"cursor release button{button}"):
            subprocess.run(["swaymsg", "-q", f"seat - {command}"], check=False)

    def key(self, name):
        subprocess.run(["wtype", "-k", name], check=False)

    def picture(self, path):
        subprocess.run(["grim", path], check=False)
