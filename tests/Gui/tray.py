"""A status area: takes status-notifier items, and keeps the name of each. Prints "ready", then each item that comes."""

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.kde.StatusNotifierWatcher"


class Watcher(dbus.service.Object):
    def __init__(self, bus):
        super().__init__(bus, "/StatusNotifierWatcher")
        self.items = []

    @dbus.service.method(NAME, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, item, sender):
        self.items.append(sender if item.startswith("/") else str(item))
        print("item", self.items[-1], flush=True)

    @dbus.service.method(NAME, in_signature="s")
    def RegisterStatusNotifierHost(self, host):
        pass

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.GetAll(interface)[name]

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": dbus.Int32(0),
                "RegisteredStatusNotifierItems": dbus.Array(self.items, signature="s")}

    # The toolkit reads from this whether a host is there.
    @dbus.service.method("org.freedesktop.DBus.Introspectable", out_signature="s")
    def Introspect(self):
        return f"""<node><interface name="{NAME}">
          <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
          <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
          <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
          <property name="ProtocolVersion" type="i" access="read"/>
          <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
        </interface></node>"""


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
session = dbus.SessionBus()
watcher = Watcher(session)
kept = dbus.service.BusName(NAME, session)
print("ready", flush=True)
GLib.MainLoop().run()
