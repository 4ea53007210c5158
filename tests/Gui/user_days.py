"""user_days.py BUILD DAY...: days of a user with the program's windows; DAY is a test's name."""

import base64
import os
import pathlib
import re
import subprocess
import sys
import time
import unittest

from desktop import Desktop, eventually

BUILD = pathlib.Path(sys.argv.pop(1))


class UserDays(unittest.TestCase):
    def test_first_start_to_a_launched_application(self):
        with Desktop(BUILD) as desktop:
            address = desktop.start_broker()
            desktop.start()
            self.assertFalse(desktop.has_state(desktop.find("push button", "Next"), "ENABLED"))
            desktop.connect(address)
            desktop.press("Right", "Right", "Right", "Return")
            desktop.find("list item", "Code Editor")
            desktop.press("BackSpace")
            desktop.find("list item", "Development")
            desktop.type("writ")
            desktop.find("list item", "Writer")
            desktop.press("Return")
            eventually(desktop.sessions, "a session program")
            self.assertTrue(desktop.sessions()[0][-1].startswith(str(desktop.folder / "run")))

    def test_wrong_password(self):
        with Desktop(BUILD) as desktop:
            desktop.start(f"--address={desktop.start_broker()}")
            desktop.click("push button", "Next")
            desktop.log_in("HAFENWERK\\demo", "secret-by-mistake")
            desktop.find_enabled("push button", "Retry")
            for thing in desktop.everything():
                self.assertNotIn("secret-by-mistake", f"{thing.get_name()} {desktop.text_of(thing)}")
            desktop.fill("Password", "demo", role="password text")
            desktop.press("Return")
            desktop.find("push button", "Skip")
            self.assertNotIn("secret-by-mistake", (desktop.folder / "orvane.log").read_text())

    def test_a_broker_that_never_answers(self):
        with Desktop(BUILD) as desktop:
            desktop.start(f"--address={desktop.start_deaf_broker()}")
            desktop.click("push button", "Next")
            spinner = desktop.place_of(desktop.find(None, "Connecting"))
            frames = set()
            def turned():
                frames.add(desktop.pixel(spinner.x + spinner.width // 2, spinner.y + 4))
                return len(frames) > 1
            eventually(turned, "a window that is painted")
            began = time.monotonic()
            desktop.press("Escape")
            desktop.find_enabled("push button", "Next")
            self.assertLess(time.monotonic() - began, 5)
            self.assertIn("text: E-mail or web address", desktop.names())

    def test_quit_in_the_middle_of_a_connect(self):
        with Desktop(BUILD) as desktop:
            program = desktop.start(f"--address={desktop.start_deaf_broker()}")
            desktop.click("push button", "Next")
            desktop.find("push button", "Cancel")
            desktop.press("ctrl+q")
            self.assertEqual(program.wait(10), 0)

    def test_link_and_launch_file_by_a_second_process(self):
        with Desktop(BUILD) as desktop:
            address = desktop.start_broker()
            desktop.start()
            desktop.click("push button", "Skip")
            desktop.click("push button", "Skip")
            desktop.find_enabled("push button", "Connections")
            self.assertEqual(desktop.run_again(link_to(desktop.start_deaf_broker())), 0)
            desktop.find("push button", "Cancel")
            desktop.press("Escape")
            desktop.wait_gone("push button", "Cancel")
            desktop.press("Escape")
            desktop.click("push button", "Skip")
            desktop.find_enabled("push button", "Connections")
            self.assertEqual(desktop.run_again(link_to(address)), 0)
            desktop.log_in("HAFENWERK\\demo", "demo")
            desktop.find("list item", "Office")
            self.assertEqual(desktop.run_again("/nowhere/at all.ovl"), 0)
            desktop.find("label", "The launch file cannot be read.")
            desktop.press("Return")
            desktop.wait_gone("label", "The launch file cannot be read.")
            desktop.find("frame", "Hafenwerk.*")

    def test_desktop_integration(self):
        with Desktop(BUILD) as desktop:
            desktop.start(f"--address={desktop.start_broker()}")
            desktop.click("push button", "Next")
            desktop.log_in("HAFENWERK\\demo", "demo")
            desktop.click("push button", "Skip")
            desktop.find_enabled("push button", "Log out")
            desktop.press("ctrl+d")
            menu = StatusMenu(desktop)
            desktop.wait_gone("push button", "Connections")
            menu.click("Hafenwerk", "Office", "Writer")
            eventually(desktop.sessions, "a session program")
            menu.click("Expanded view")
            desktop.find_enabled("push button", "Connections")

    def test_without_a_status_area(self):
        with Desktop(BUILD, tray=False) as desktop:
            desktop.start()
            desktop.click("push button", "Skip")
            desktop.click("push button", "Skip")
            desktop.find_enabled("push button", "Connections")
            desktop.press("ctrl+d")
            desktop.click("push button", "Menu of Orvane")
            desktop.press("Down", "Return")  # the first entry that is enabled: Expanded view
            desktop.find_enabled("push button", "Connections")

    def test_editor_with_undo(self):
        with Desktop(BUILD) as desktop:
            address = desktop.start_broker()
            program = desktop.start()
            desktop.connect(address)
            desktop.press("ctrl+l")
            desktop.click("push button", "Edit Hafenwerk")
            desktop.fill("Name", "My own name")
            box = desktop.find("check box", "Share the clipboard")
            self.assertTrue(desktop.has_state(box, "CHECKED"))
            self.assertIn("My own name", self.stored_names(desktop))
            desktop.click("push button", "Undo all changes")
            eventually(lambda: "Hafenwerk" in self.stored_names(desktop), "the old name in the store")
            eventually(lambda: desktop.text_of(desktop.find("text", "Name")) == "Hafenwerk", "the old name")
            desktop.fill("Name", "Another")
            desktop.press("Escape")
            desktop.find("push button", "Another")
            desktop.press("Escape", "alt+F4")
            self.assertEqual(program.wait(10), 0)
            desktop.start()
            eventually(lambda: "Another" in self.stored_names(desktop), "the new name in the store")

    @staticmethod
    def stored_names(desktop):
        store = next((desktop.folder / "home").rglob("settings_2.plist"))
        return store.read_bytes().decode("latin-1")

    def test_color_scheme_of_the_desktop(self):
        with Desktop(BUILD) as desktop:
            portal = desktop.run_beside("portal", sys.executable, pathlib.Path(__file__).with_name("portal.py"), "dark")
            eventually(lambda: (desktop.folder / "portal.log").read_text().startswith("ready"), "a portal")
            desktop.start()
            corner = desktop.place_of(desktop.find("push button", "Next"))
            def brightness():
                return sum(desktop.pixel(corner.x + corner.width // 2, corner.y + corner.height + 12))
            eventually(lambda: brightness() < 200, "a dark window")
            portal.send_signal(10)
            eventually(lambda: brightness() > 600, "a light window")

    def test_two_hundred_connections_and_five_thousand_applications(self):
        """The longest time that the main loop took for anything is told; a person would feel a tenth of a second."""
        with Desktop(BUILD) as desktop:
            address = desktop.start_broker(large_farm(desktop.folder / "farm.xml", 50, 100))
            host, port = address.removeprefix("http://").split(":")
            store = desktop.folder / "home/.local/share/Brindle Software/Orvane AppGate/settings_2.plist"
            store.parent.mkdir(parents=True, mode=0o700)
            subprocess.run([BUILD / "tests/Gui/store-connections", store, "200", host, port], check=True)
            program = desktop.start(ORVANE_WATCHDOG="1")
            desktop.click("push button", "Skip")
            desktop.press("ctrl+l")
            desktop.click("push button", "Connection 1")
            desktop.log_in("demo", "demo")
            desktop.find("list item", "Folder 1")
            desktop.press("Escape", "Return")
            desktop.find("list item", "Application 1")
            desktop.press("BackSpace")
            desktop.type("application 49")
            desktop.find("list item", "Application 49.*")
            desktop.press("Escape", "ctrl+l")
            desktop.click("push button", "Edit Connection 3")
            desktop.fill("Name", "Renamed")
            desktop.press("Escape", "Escape", "ctrl+d")
            menu = StatusMenu(desktop)
            menu.click("Expanded view")
            desktop.find_enabled("push button", "Connections")
            desktop.press("ctrl+q")
            self.assertEqual(program.wait(10), 0)
            gap = re.search(r"longest main loop gap: (\d+) ms", (desktop.folder / "orvane.log").read_text())
            print(gap[0])
            self.assertLess(int(gap[1]), 1000)

    def test_languages(self):
        for language, title in (("de_DE.UTF-8", "Wo sind Ihre Anwendungen?"), ("ja_JP.UTF-8", "アプリケーションの場所")):
            if os.fork() == 0:
                try:
                    with Desktop(BUILD, language=language) as desktop:
                        desktop.start()
                        desktop.find("label", title.replace("?", r"\?"))
                    os._exit(0)
                finally:
                    os._exit(1)
            self.assertEqual(os.waitstatus_to_exitcode(os.wait()[1]), 0, language)

    def test_every_control_has_a_name(self):
        controls = {"push button", "text", "password text", "check box", "radio button", "combo box", "list", "menu item"}
        with Desktop(BUILD) as desktop:
            desktop.start(f"--address={desktop.start_broker()}")
            def check(where):
                nameless = [thing.get_role_name() for thing in desktop.everything()
                            if thing.get_role_name() in controls and not thing.get_name()]
                self.assertEqual(nameless, [], where)
            check("address")
            desktop.click("push button", "Next")
            desktop.find("text", "User name")
            check("credentials")
            desktop.log_in("HAFENWERK\\demo", "demo")
            desktop.find("push button", "Skip")
            check("tutorial")
            desktop.click("push button", "Skip")
            desktop.press("ctrl+l")
            desktop.find("push button", "Edit Hafenwerk")
            check("connections")
            desktop.click("push button", "Edit Hafenwerk")
            desktop.click("push button", "Advanced settings")
            check("editor")
            desktop.press("Escape")
            desktop.find("push button", "Edit Hafenwerk")
            desktop.press("ctrl+comma")
            desktop.find("check box", "Write a detailed log")
            check("settings")


def link_to(address):
    encoded = base64.b64encode(address.encode()).decode()
    return f"orvane://autodetect/?autodetecturl={encoded}&farmguid="


def large_farm(file, folders, applications):
    """A farm with so many folders, each with so many applications."""
    lines = ['<farm name="Large"><user name="demo" password="demo"/>']
    number = 0
    for folder in range(1, folders + 1):
        lines.append(f'<folder name="Folder {folder}">')
        for _ in range(applications):
            number += 1
            lines.append(f'<application name="a{number}" shortcut="Application {number}" path="a.exe"/>')
        lines.append("</folder>")
    file.write_text("\n".join(lines + ["</farm>"]))
    return file


class StatusMenu:
    """The status item's menu, used over the bus as a panel does."""

    def __init__(self, desktop):
        import dbus

        self.dbus = dbus
        item = eventually(lambda: [line.split()[1] for line in (desktop.folder / "tray.log").read_text().splitlines()
                                   if line.startswith("item")], "a status item")[-1]
        bus = dbus.bus.BusConnection(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        properties = dbus.Interface(bus.get_object(item, "/StatusNotifierItem"), dbus.PROPERTIES_IFACE)
        path = properties.Get("org.kde.StatusNotifierItem", "Menu")
        self.menu = dbus.Interface(bus.get_object(item, path), "com.canonical.dbusmenu")

    def click(self, *titles):
        parent = 0
        for title in titles:
            parent = eventually(lambda: self._child(parent, title), f"menu item {title}")
        self.menu.Event(parent, "clicked", "", self.dbus.UInt32(0))

    def _child(self, parent, title):
        self.menu.AboutToShow(parent)
        children = self.menu.GetLayout(parent, 1, self.dbus.Array([], signature="s"))[1][2]
        return next((int(number) for number, properties, _ in children
                     if properties.get("label", "").replace("_", "") == title and properties.get("enabled", True)), None)


if __name__ == "__main__":
    unittest.main()
