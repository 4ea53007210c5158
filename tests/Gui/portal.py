"""portal.py dark|light: a settings portal that tells a colour scheme, and the other one from SIGUSR1 on."""

import signal
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

INTERFACE = "org.freedesktop.portal.Settings"
SCHEMES = {"dark": 1, "light": 2}


class Portal(dbus.service.Object):
    def __init__(self, bus, scheme):
        super().__init__(bus, "/org/freedesktop/portal/desktop")
        self.scheme = scheme

    def value(self):
        return dbus.UInt32(SCHEMES[self.scheme], variant_level=1)

    @dbus.service.method(INTERFACE, in_signature="ss", out_signature="v")
    def Read(self, name_space, key):
        return dbus.UInt32(SCHEMES[self.scheme], variant_level=2)

    @dbus.service.signal(INTERFACE, signature="ssv")
    def SettingChanged(self, name_space, key, value):
        pass

    def switch(self):
        self.scheme = "light" if self.scheme == "dark" else "dark"
        self.SettingChanged("org.freedesktop.appearance", "color-scheme", self.value())
        return True


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
session = dbus.SessionBus()
portal = Portal(session, sys.argv[1])
kept = dbus.service.BusName("org.freedesktop.portal.Desktop", session)
GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, portal.switch)
print("ready", flush=True)
GLib.MainLoop().run()
