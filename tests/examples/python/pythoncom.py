"""Stands in for pywin32, as far as the example uses it."""


class com_error(Exception):
    def __init__(self, hresult, strerror, excepinfo, argerror):
        super().__init__(hresult, strerror, excepinfo, argerror)
        self.hresult, self.strerror, self.excepinfo, self.argerror = hresult, strerror, excepinfo, argerror
