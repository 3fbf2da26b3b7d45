import subprocess
import time
import unittest

import desktop
import sight
from journey import Journey


class PanelJourney(Journey):
    """The panel at the icon, with the mouse and the keyboard of the X server. There are backups to restore."""

    def setUp(self):
        super().setUp()
        self.write(".tunedeck/settings.json", '{"onboarded": true}')
        scenario = desktop.TOOLS / "scenario"
        subprocess.run([scenario, self.bundle / "Contents/Helpers/tunedeck", "backups"], env=self.environment, check=True)
        self.start()
        self.view = sight.XDesktop(self.environment["DISPLAY"])
        self.comes(self.view.tray_window)

    def click_icon(self, button=sight.LEFT):
        icon = self.view.tray_window()
        self.view.click(icon.x + icon.width / 2, icon.y + icon.height / 2, button)

    def controls(self):
        return [each for _, _, controls in sight.controls(self.desktop.screen) for each in controls]

    def is_shown(self, name="Change Folder…"):
        return name in (each.name for each in self.controls())

    def opens(self):
        time.sleep(0.6)  # it isn't the second press of a double click
        self.click_icon()
        self.comes(self.is_shown, "the panel doesn't open")

    def closes(self, after):
        self.comes(lambda: not self.is_shown(), f"the panel is still open after {after}")

    def click(self, name):
        """Clicks the control with the mouse."""
        rect = next(each.rect for each in self.controls() if each.name == name)
        self.view.click(rect.x + rect.width / 2, rect.y + rect.height / 2)

    def focus(self, name):
        """Moves the keyboard focus to a control."""
        def moved():
            if any(each.focused and each.name == name for each in self.controls()):
                return True
            self.view.key("Tab")
            time.sleep(0.1)
            return False

        self.comes(moved, f"the focus doesn't reach {name}")

    def test_closes_on_a_click_anywhere_else_and_opens_its_menu(self):
        for button, where in ((sight.LEFT, "the desktop"), (sight.RIGHT, "the desktop, with the right button")):
            self.opens()
            self.view.click(200, 700, button)
            self.closes(f"a click on {where}")
            self.view.key("Escape")  # the window manager's menu
        self.opens()
        self.assertLessEqual({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}, self.view.states())
        self.click_icon()
        self.closes("a second click on the icon")
        time.sleep(0.6)
        self.assertFalse(self.is_shown(), "the click that closes the panel doesn't open it again")
        self.opens()
        self.click_icon(sight.RIGHT)
        self.closes("a right click on the icon")
        time.sleep(0.6)
        self.assertEqual(self.view.menus(), 1, "its menu stays open")
        self.view.key("Up")
        self.view.key("Return")
        self.comes(lambda: self.application.poll() == 0, "the last entry of the menu doesn't quit")

    def test_without_a_window_manager_it_closes_as_well_and_its_questions_take_the_mouse(self):
        self.desktop.window_manager.kill()  # a click on the desktop takes no focus
        self.desktop.window_manager.wait()
        self.opens()
        self.view.click(200, 700)
        self.closes("a click on the desktop")
        self.opens()
        time.sleep(0.6)
        self.press("Backups (24)")
        self.press("Restore")
        self.comes(lambda: self.is_shown("Cancel"))
        self.click("Cancel")
        self.comes(lambda: not self.is_shown("Cancel"), "a click doesn't answer the question")
        self.assertTrue(self.is_shown())

    def test_a_held_key_opens_a_question_but_does_not_answer_it(self):
        self.opens()
        self.press("Backups (24)")
        self.focus("Restore")
        self.view.hold("Return", 2)
        self.comes(lambda: self.is_shown("Cancel"), "the key opens no question")
        time.sleep(0.5)
        self.assertTrue(self.is_shown("Cancel"), "the held key answered the question")
        self.view.key("Return")
        self.comes(lambda: not self.is_shown("Cancel"), "Return doesn't answer the question")


if __name__ == "__main__":
    unittest.main()
