"""Stands in for comtypes, as far as the example uses it."""


class COMError(Exception):
    def __init__(self, hresult, text, details):
        super().__init__(hresult, text, details)
        self.hresult, self.text, self.details = hresult, text, details
