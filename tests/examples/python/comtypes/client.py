"""Stands in for comtypes, as far as the example uses it."""

from types import SimpleNamespace

import plant_dialogs
from comtypes import COMError

_LIBRARY = SimpleNamespace(KRXDialog="class", IKRXDialog="interface", krButton1=11, krButton2=12, krButton3=13)


def GetModule(library):
    assert library == (plant_dialogs.LIBRARY, 1, 0)
    return _LIBRARY


def CreateObject(name, interface=None):
    assert (name, interface) == (_LIBRARY.KRXDialog, _LIBRARY.IKRXDialog)
    return plant_dialogs.Dialogs(COMError(-2147220974, None, ("users.conf, line 2", "KorvelRuntime", None, 0, None)))
