"""Observes a program on an X desktop: its tray icon, its window and what it draws."""
import select
import time

from Xlib import X, display, error
from Xlib.ext import damage, xtest


class Desktop:
    def __init__(self):
        self.display = display.Display()
        self.root = self.display.screen().root
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self.last_click = 0
        self.xembed = self.display.intern_atom("_XEMBED_INFO")
        self.display.damage_query_version()
        self.display.sync()

    def events(self, seconds):
        """Yields X events as they arrive, for `seconds`."""
        end = time.monotonic() + seconds
        while (left := end - time.monotonic()) > 0:
            if not self.display.pending_events() and not select.select([self.display.fileno()], [], [], left)[0]:
                return
            while self.display.pending_events():
                yield self.display.next_event()

    def forget_events(self):
        self.display.sync()
        while self.display.pending_events():
            self.display.next_event()

    def wait_for_icon(self, seconds=20):
        """Waits for an icon in the tray; returns the time and the icon's window."""
        for event in self.events(seconds):
            now = time.monotonic()
            if event.type == X.ReparentNotify and event.parent != self.root and self._is_icon(event.window):
                return now, event.window
        raise TimeoutError("no icon appeared in the tray")

    def _is_icon(self, window):
        try:
            return window.get_full_property(self.xembed, X.AnyPropertyType) is not None
        except error.XError:
            return False

    def click(self, window):
        """Clicks the centre of the window; returns the time of the click."""
        time.sleep(max(0, self.last_click + 0.5 - time.monotonic()))  # avoid a double click
        size = window.get_geometry()
        place = window.translate_coords(self.root, 0, 0)
        xtest.fake_input(self.display, X.MotionNotify, x=-place.x + size.width // 2, y=-place.y + size.height // 2)
        xtest.fake_input(self.display, X.ButtonPress, 1)
        now = self.last_click = time.monotonic()
        xtest.fake_input(self.display, X.ButtonRelease, 1)
        self.display.flush()
        return now

    def windows(self, name, parent=None):
        """Yields the visible windows with this class name, except icons."""
        for window in (parent or self.root).query_tree().children:
            try:
                shown = window.get_attributes().map_state == X.IsViewable
                size = window.get_geometry()
                if not shown or size.width < 100:
                    continue
                words = window.get_wm_class()
                if words and name in (word.lower() for word in words):
                    yield window
                else:
                    yield from self.windows(name, window)
            except error.XError:
                continue

    def drawn(self, window):
        """Whether the window shows more than one colour."""
        size = window.get_geometry()
        image = window.get_image(0, 0, size.width, size.height, X.ZPixmap, 0xFFFFFFFF).data
        return image.count(image[:4]) * 4 < len(image)

    def wait_for_window(self, name, seconds=10):
        """Waits for the program's window to draw its first frame; returns the time and the window."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            for window in self.windows(name):
                try:
                    if self.drawn(window):
                        return time.monotonic(), window
                except error.XError:
                    pass
        raise TimeoutError(f"no window of {name} was drawn")

    def wait_for_no_window(self, name, seconds=5):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if not list(self.windows(name)):
                return
            time.sleep(0.005)
        raise TimeoutError(f"the window of {name} didn't close")

    def frames(self, window, seconds):
        """The rectangles painted in the window within `seconds`, oldest first."""
        watch = window.damage_create(damage.DamageReportRawRectangles)
        self.forget_events()
        drawn = [event.area for event in self.events(seconds)
                 if event.type == self.display.extension_event.DamageNotify]
        self.display.damage_destroy(watch)
        self.display.sync()
        return drawn
