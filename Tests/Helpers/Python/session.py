"""What a desktop has on its session bus, in small."""
import pathlib

from gi.repository import Gio, GLib

BUS_CONFIGURATION = pathlib.Path(__file__).resolve().parents[3] / "tools/lib/session-bus.conf"


def bus_command(address):
    """The command that starts a session bus; it prints a line when it is ready."""
    return ["dbus-daemon", "--nofork", "--print-address=1", f"--config-file={BUS_CONFIGURATION}", f"--address={address}"]


def connect(address):
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


class Peer:
    """An object with its own connection and name. Its main loop runs in another thread."""

    def __init__(self, address, path, interface, properties=None):
        self.bus = connect(address)
        self.path, self.properties = path, properties
        self.interface = Gio.DBusNodeInfo.new_for_xml(f"<node>{interface}</node>").interfaces[0]
        self.bus.register_object(
            path, self.interface,
            lambda _bus, sender, _path, _interface, method, arguments, invocation:
                invocation.return_value(self.answer(method, sender, arguments.unpack())),
            lambda _bus, _sender, _path, _interface, name: self.properties[name], None)
        self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                           GLib.Variant("(su)", (self.interface.name, 0)), None, Gio.DBusCallFlags.NONE, 5000, None)

    def answer(self, method, sender, arguments):
        raise NotImplementedError

    def emit(self, signal, *arguments):
        self.bus.emit_signal(None, self.path, self.interface.name, signal, GLib.Variant(*arguments))

    def close(self):
        if not self.bus.is_closed():
            self.bus.close(None, None)


class NotificationServer(Peer):
    INTERFACE = """<interface name="org.freedesktop.Notifications">
    <method name="GetCapabilities"><arg type="as" direction="out"/></method>
    <method name="Notify">
        <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
        <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
        <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/></method>
    </interface>"""

    def __init__(self, address):
        self.posted = []  # (title, body)
        super().__init__(address, "/org/freedesktop/Notifications", self.INTERFACE)

    def answer(self, method, sender, arguments):
        if method == "GetCapabilities":
            return GLib.Variant("(as)", (["actions", "body", "body-markup"],))
        self.posted.append(arguments[3:5])
        return GLib.Variant("(u)", (len(self.posted),))

    def click_last(self):
        if self.posted:
            self.emit("ActionInvoked", "(us)", (len(self.posted), "default"))
            self.emit("NotificationClosed", "(uu)", (len(self.posted), 2))


class TrayHost(Peer):
    """A watcher and host of StatusNotifierItems."""

    INTERFACE = """<interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
    </interface>"""

    def __init__(self, address):
        self.item = None
        super().__init__(address, "/StatusNotifierWatcher", self.INTERFACE,
                         {"IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                          "RegisteredStatusNotifierItems": GLib.Variant("as", [])})

    def answer(self, method, sender, arguments):
        self.item = sender
        self.properties["RegisteredStatusNotifierItems"] = GLib.Variant("as", [f"{sender}/StatusNotifierItem"])

    def click(self):
        """Clicks the item that registered last."""
        if self.item:
            self.bus.call(self.item, "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                          GLib.Variant("(ii)", (0, 0)), None, Gio.DBusCallFlags.NONE, -1, None, None)


class TrayItem:
    """The application's item on the session bus and its menu, as the desktop's bar sees them."""

    def __init__(self, bus):
        self.bus = bus

    def item(self):
        """The bus name of the item that registered last, or None."""
        watcher = "org.kde.StatusNotifierWatcher"
        try:
            items, = self.bus.call_sync(watcher, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties", "Get",
                                        GLib.Variant("(ss)", (watcher, "RegisteredStatusNotifierItems")), None,
                                        Gio.DBusCallFlags.NONE, 5000, None).unpack()
        except GLib.Error:
            return None
        names = [each.split("/")[0] for each in items]
        return names[-1] if names else None

    def activate(self):
        self.call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", "(ii)", (0, 0))

    def call(self, path, interface, method, *arguments):
        """The results of a call to the item."""
        return self.bus.call_sync(self.item(), path, interface, method, GLib.Variant(*arguments), None,
                                  Gio.DBusCallFlags.NONE, 5000, None).unpack()

    def property(self, name):
        return self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                         "(ss)", ("org.kde.StatusNotifierItem", name))[0]

    def entries(self):
        """The ids of the shown entries of the item's menu, by their labels; disabled ones are in parentheses."""
        _, (_, _, children) = self.call("/MenuBar", "com.canonical.dbusmenu", "GetLayout", "(iias)", (0, -1, []))
        entries = {}
        for number, properties, _ in children:
            if properties.get("visible", True) and "label" in properties:
                label = properties["label"]
                entries[label if properties.get("enabled", True) else f"({label})"] = number
        return entries

    def open_menu(self):
        self.call("/MenuBar", "com.canonical.dbusmenu", "AboutToShow", "(i)", (0,))

    def select(self, label):
        event = (self.entries()[label], "clicked", GLib.Variant("i", 0), 0)
        self.call("/MenuBar", "com.canonical.dbusmenu", "Event", "(isvu)", event)

    def watch(self):
        """A list that gets the names of the signals that the item and its menu emit from now on."""
        names = []
        self.bus.signal_subscribe(self.item(), None, None, None, None, Gio.DBusSignalFlags.NONE,
                                  lambda _bus, _sender, _path, _interface, name, _arguments: names.append(name))
        return names
