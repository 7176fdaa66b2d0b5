"""Stands in for pywin32, as far as the example uses it."""

from types import SimpleNamespace

import plant_dialogs
import pythoncom

constants = SimpleNamespace()


def _ensure_dispatch(name):
    assert name == plant_dialogs.CLASS
    constants.krButton1, constants.krButton2, constants.krButton3 = 11, 12, 13
    info = (0, "KorvelRuntime", "users.conf, line 2", None, 0, -2147220974)
    return plant_dialogs.Dialogs(pythoncom.com_error(-2147352567, "Exception occurred.", info, None))


gencache = SimpleNamespace(EnsureDispatch=_ensure_dispatch)
