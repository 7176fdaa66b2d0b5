"""Asks a question and prints the answer: python message_box.py (needs the package pywin32)."""

import win32com.client

KR_YES = 6

dialogs = win32com.client.Dispatch("KRXDialogs.KRXDialog")
if dialogs.KRMsgBox("Start the pump?", 4 + 32, "Pump") == KR_YES:
    print("The pump starts.")
else:
    print("Nothing happens.")
