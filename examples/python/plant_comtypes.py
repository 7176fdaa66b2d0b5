"""A small plant: log on, ask, choose a recipe file, show who did it: python plant_comtypes.py

Needs the package comtypes, which makes a module of the type library.
"""

import sys

from comtypes import COMError
from comtypes.client import CreateObject, GetModule

QUESTION = 32
THIRD_IS_DEFAULT = 512
RECIPE_FOLDER = r"C:\Plant\Recipes"
TYPE_LIBRARY = ("{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3001}", 1, 0)


def load_recipe():
    library = GetModule(TYPE_LIBRARY)
    dialogs = CreateObject(library.KRXDialog, interface=library.IKRXDialog)
    if not dialogs.KRUserLogOn():
        return "Nobody has logged on."
    answer = dialogs.KRMsgBoxEx("Which mixer takes the next batch?", QUESTION + THIRD_IS_DEFAULT,
                                "Next batch", "", 0, "Mixer &A", "Mixer &B", "&None")
    mixer = {library.krButton1: "mixer A", library.krButton2: "mixer B"}.get(answer)
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
    except COMError as failure:
        sys.exit(f"The plant stops: {failure.details[0] or failure.text}")
    except OSError as failure:  # the component is not registered
        sys.exit(f"The plant stops: {failure.strerror}")
