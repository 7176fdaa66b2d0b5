' Asks a question and prints the answer: cscript message_box.vbs
Option Explicit
Const krYes = 6
Dim dialogs
Set dialogs = CreateObject("KRXDialogs.KRXDialog")
If dialogs.KRMsgBox("Start the pump?", 4 + 32, "Pump") = krYes Then
  WScript.Echo "The pump starts."
Else
  WScript.Echo "Nothing happens."
End If
