"""Dialogs that answer as the test says: PLANT holds what the operator does, such as "on 11 bread.rcp".

In their order: "on" or "off" for the log-on, or "fails"; the code of the question's button; the recipe. What is not
said is given up.
"""

import os

LIBRARY = "{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3001}"
CLASS = "KRXDialogs.KRXDialog"
QUESTION, THIRD_IS_DEFAULT = 32, 512


class Dialogs:
    def __init__(self, failure):
        self.failure = failure
        self.acts = os.environ["PLANT"].split()
        self.called = []

    def act(self, method, otherwise):
        self.called.append(method)
        return self.acts.pop(0) if self.acts else otherwise

    def KRUserLogOn(self):
        act = self.act("KRUserLogOn", "off")
        if act == "fails":
            raise self.failure
        return act == "on"

    def KRMsgBoxEx(self, text, style, title, help_file, context, first, second, third, seconds=0):
        assert all(isinstance(part, str) for part in (text, title, help_file, first, second, third))
        assert (style, context, seconds) == (QUESTION + THIRD_IS_DEFAULT, 0, 0)
        return int(self.act("KRMsgBoxEx", "13"))

    def KROpenFile(self, name, folder, types, change_up=True, title=""):
        assert (name, folder, change_up) == ("", "C:\\Plant\\Recipes", False)
        assert isinstance(types, str) and title.startswith("Recipe for mixer ")
        file = self.act("KROpenFile", "")
        return f"{folder}\\{file}" if file else ""

    def KRWhoAmI(self):
        assert self.called == ["KRUserLogOn", "KRMsgBoxEx", "KROpenFile"]
        print("who am I")
