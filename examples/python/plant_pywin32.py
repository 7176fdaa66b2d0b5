"""A small plant: log on, ask, choose a recipe file, show who did it: python plant_pywin32.py

Needs the package pywin32, which makes classes and constants of the type library.
"""

import sys

import pythoncom
from win32com.client import constants, gencache

QUESTION = 32
THIRD_IS_DEFAULT = 512
RECIPE_FOLDER = r"C:\Plant\Recipes"


def load_recipe():
    dialogs = gencache.EnsureDispatch("KRXDialogs.KRXDialog")
    if not dialogs.KRUserLogOn():
        return "Nobody has logged on."
    answer = dialogs.KRMsgBoxEx("Which mixer takes the next batch?", QUESTION + THIRD_IS_DEFAULT,
                                "Next batch", "", 0, "Mixer &A", "Mixer &B", "&None")
    mixer = {constants.krButton1: "mixer A", constants.krButton2: "mixer B"}.get(answer)
    if mixer is None:
        return "No mixer has been chosen."
    recipe = dialogs.KROpenFile("", RECIPE_FOLDER, "Recipes|*.rcp|All files|*.*", False,
                                f"Recipe for {mixer}")
    if not recipe:
        return "No recipe has been chosen."
    dialogs.KRWhoAmI()
    return f"Loaded into {mixer}: {recipe}"


if __name__ == "__main__":
    try:
        print(load_recipe())
    except pythoncom.com_error as failure:
        description = failure.excepinfo and failure.excepinfo[2]
        sys.exit(f"The plant stops: {description or failure.strerror}")
