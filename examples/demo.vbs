' Opens every dialog of the library from a menu that is made of the library's own message boxes,
' so it works with the mouse, the keyboard and by touch. Every result is printed.
'
' One row of the table is one entry of the menu: its text, the method, the method's arguments.
' Arguments that a row leaves out at its end are left to their defaults.
Option Explicit

Const MenuTitle = "KRXDialogs demo"
Const Stop_ = 16, Question = 32, Exclamation = 48, Information = 64
Const Second_ = 256, Third = 512

Dim Dialogs, Runtime, Entries
Randomize
Set Dialogs = CreateObject("KRXDialogs.KRXDialog")
Set Runtime = CreateObject("KorvelRuntime.RuntimeSettings")
Runtime.Language = "en"
' The look of a panel may be named: "dark", "grey", "high-contrast".
If WScript.Arguments.Count > 0 Then CreateObject("KorvelRuntime.PanelSettings").Theme = WScript.Arguments(0)
' And when the keyboard on the screen comes: "always", "never".
If WScript.Arguments.Count > 1 Then CreateObject("KorvelRuntime.PanelSettings").Keyboard = WScript.Arguments(1)
Entries = AllEntries()
RunMenu
WScript.Echo "The menu has been closed."

Function AllEntries()
  Dim long_text, line_break, umlauts, i
  line_break = Chr(13) & Chr(10)
  umlauts = "Gr" & Chr(246) & Chr(223) & "e " & Chr(252) & "berpr" & Chr(252) & "fen"
  For i = 1 To 12
    long_text = long_text & "The pressure of boiler " & i & " has left its range and needs a look. "
  Next
  AllEntries = Array( _
    Array("OK", "KRMsgBox", "The recipe has been saved.", 0, "Recipe"), _
    Array("OK, information", "KRMsgBox", "The recipe has been saved.", Information, "Recipe"), _
    Array("OK and Cancel, exclamation", "KRMsgBox", "Overwrite the recipe?", 1 + Exclamation, "Recipe"), _
    Array("Abort, Retry and Ignore, stop", "KRMsgBox", "The drive does not answer.", 2 + Stop_, "Drive 4"), _
    Array("Yes, No and Cancel, question", "KRMsgBox", "Save before closing?", 3 + Question, "Recipe"), _
    Array("Yes and No, question", "KRMsgBox", "Start the pump?", 4 + Question, "Pump"), _
    Array("Retry and Cancel, stop", "KRMsgBox", "The station is not connected.", 5 + Stop_, "Station"), _
    Array("Second button is the default", "KRMsgBox", "Empty the tank?", 4 + Question + Second_, "Tank"), _
    Array("Third button is the default", "KRMsgBox", "Save before closing?", 3 + Question + Third, "Recipe"), _
    Array("Help button", "KRMsgBox", "The limit is exceeded.", 1 + Exclamation, "Limit", "plant.chm"), _
    Array("Default button without a result: an error", "KRMsgBox", "Never shown", Second_, "Limit"), _
    Array("Three free buttons", "KRMsgBoxEx", "Which way?", Question, "Conveyor", "", 0, "&Left", "&Straight on", "&Right"), _
    Array("Yes, No and one free button", "KRMsgBoxEx", "Acknowledge the alarm?", 4 + Exclamation, "Alarm", "", 0, "", "", "&Later"), _
    Array("Free button and help", "KRMsgBoxEx", "Calibration is done.", Information, "Scale", "plant.chm", 0, "&Fertig"), _
    Array("No answer button", "KRMsgBox", "Only the close button is left.", 6 + Information, "Notice"), _
    Array("Closes itself after three seconds", "KRMsgBoxEx", "Continuing by itself.", 1 + Information, "Countdown", "", 0, "", "", "", 3), _
    Array("Long text", "KRMsgBox", long_text, Exclamation, "Boilers"), _
    Array("Lines and a title of two lines", "KRMsgBox", "First line" & line_break & "Second line" & line_break & line_break & "Last line", Information, "Shift report" & line_break & "Line 2"), _
    Array("No title: the host's name", "KRMsgBox", "The caption is the host application's name.", Information), _
    Array("Who is logged on: nobody yet", "KRWhoAmI"), _
    Array("Log on", "KRUserLogOn"), _
    Array("Who is logged on", "KRWhoAmI"), _
    Array("Change password", "KRChangePassword"), _
    Array("Create users (by the administrator)", "Users"), _
    Array("Add a user", "KRAddUser"), _
    Array("User overview", "KRUser"), _
    Array("Log on by list", "KRUserLogOnCombo"), _
    Array("Select a directory", "KRSelectDirectory", "C:\windows\system32", True, ""), _
    Array("Select a directory below the start directory only", "KRSelectDirectory", "C:\windows", False, "Below"), _
    Array("Open a file", "KROpenFile", "", "C:\windows", "Settings|*.ini|All files|*.*"), _
    Array("Save a file", "KRSaveFileAs", "report.txt", "C:\windows", "Text|*.txt|All files|*.*"), _
    Array("Select a directory by touch", "KRSelectDirectoryTouch", "C:\windows\system32"), _
    Array("Open a file by touch", "KROpenFileTouch", "win.ini", "C:\windows\system32", ""), _
    Array("Deutsch einschalten", "Language", "de"), _
    Array("Ja, Nein und Abbrechen", "KRMsgBox", umlauts & "?", 3 + Question, "Gr" & Chr(246) & Chr(223) & "e"), _
    Array("Abbrechen, Wiederholen und Ignorieren", "KRMsgBox", "Das Laufwerk antwortet nicht.", 2 + Stop_, "Laufwerk 4"), _
    Array("Anmelden", "KRUserLogOn"), _
    Array("Wer ist angemeldet", "KRWhoAmI"), _
    Array("Passwort " & Chr(228) & "ndern", "KRChangePassword"), _
    Array("Anmelden mit Liste", "KRUserLogOnCombo"), _
    Array("Benutzer hinzuf" & Chr(252) & "gen", "KRAddUser"), _
    Array("Benutzer" & Chr(252) & "bersicht", "KRUser"), _
    Array("Verzeichnis ausw" & Chr(228) & "hlen", "KRSelectDirectory", "C:\windows", True, ""), _
    Array("Datei " & Chr(246) & "ffnen", "KROpenFile", "", "C:\windows", "Text|*.ini|Alle Dateien|*.*"), _
    Array("Verzeichnis mit dem Finger", "KRSelectDirectoryTouch", "C:\windows\system32"), _
    Array("Datei mit dem Finger", "KROpenFileTouch", "win.ini", "C:\windows\system32", ""), _
    Array("Switch to English", "Language", "en"), _
    Array("Settings of a touch panel", "Panel", True), _
    Array("Panel: Yes, No and Cancel", "KRMsgBox", "Save before closing?", 3 + Question, "Recipe"), _
    Array("Panel: three free buttons and help", "KRMsgBoxEx", "Which way?", Question, "Conveyor", "plant.chm", 0, "&Left", "&Straight on", "&Right"), _
    Array("Panel: log on", "KRUserLogOn"), _
    Array("Panel: who is logged on", "KRWhoAmI"), _
    Array("Panel: change password", "KRChangePassword"), _
    Array("Panel: log on by list", "KRUserLogOnCombo"), _
    Array("Panel: add a user", "KRAddUser"), _
    Array("Panel: user overview", "KRUser"), _
    Array("Panel: select a directory", "KRSelectDirectory", "C:\windows\system32", True, ""), _
    Array("Panel: open a file", "KROpenFile", "", "C:\windows", "Settings|*.ini|All files|*.*"), _
    Array("Panel: select a directory by touch", "KRSelectDirectoryTouch", "C:\windows\system32"), _
    Array("Panel: open a file by touch", "KROpenFileTouch", "win.ini", "C:\windows\system32", ""), _
    Array("Deutsch einschalten", "Language", "de"), _
    Array("Panel: Ja, Nein und Abbrechen", "KRMsgBox", umlauts & "?", 3 + Question, "Gr" & Chr(246) & Chr(223) & "e"), _
    Array("Panel: Anmelden", "KRUserLogOn"), _
    Array("Panel: Wer ist angemeldet", "KRWhoAmI"), _
    Array("Panel: Passwort " & Chr(228) & "ndern", "KRChangePassword"), _
    Array("Panel: Anmelden mit Liste", "KRUserLogOnCombo"), _
    Array("Panel: Benutzer hinzuf" & Chr(252) & "gen", "KRAddUser"), _
    Array("Panel: Benutzer" & Chr(252) & "bersicht", "KRUser"), _
    Array("Panel: Verzeichnis ausw" & Chr(228) & "hlen", "KRSelectDirectory", "C:\windows", True, ""), _
    Array("Panel: Datei " & Chr(246) & "ffnen", "KROpenFile", "", "C:\windows", "Text|*.ini|Alle Dateien|*.*"), _
    Array("Panel: Verzeichnis mit dem Finger", "KRSelectDirectoryTouch", "C:\windows\system32"), _
    Array("Panel: Datei mit dem Finger", "KROpenFileTouch", "win.ini", "C:\windows\system32", ""), _
    Array("Switch to English", "Language", "en"), _
    Array("Settings of a desktop", "Panel", False))
End Function

Sub RunMenu()
  Dim current, text
  Do
    text = "Entry " & (current + 1) & " of " & (UBound(Entries) + 1) & Chr(10) & Entries(current)(0)
    Select Case Dialogs.KRMsgBoxEx(text, 0, MenuTitle, "", 0, "&Open", "&Next", "&Quit")
      Case 11
        OpenEntry Entries(current)
        current = (current + 1) Mod (UBound(Entries) + 1)
      Case 12
        current = (current + 1) Mod (UBound(Entries) + 1)
      Case Else
        Exit Do
    End Select
  Loop
End Sub

Sub OpenEntry(entry)
  Dim result
  On Error Resume Next
  result = Outcome(entry)
  If Err.Number <> 0 Then
    result = "error " & Err.Number & " from " & Err.Source & ": " & Err.Description
  End If
  WScript.Echo entry(0) & ": " & result
End Sub

Function Outcome(entry)
  Select Case entry(1)
    Case "KRMsgBox"
      Outcome = Dialogs.KRMsgBox(entry(2), Arg(entry, 3, 0), Arg(entry, 4, ""), Arg(entry, 5, ""))
    Case "KRMsgBoxEx"
      Outcome = Dialogs.KRMsgBoxEx(entry(2), Arg(entry, 3, 0), Arg(entry, 4, ""), _
        Arg(entry, 5, ""), Arg(entry, 6, 0), Arg(entry, 7, ""), Arg(entry, 8, ""), _
        Arg(entry, 9, ""), Arg(entry, 10, 0))
    Case "KRUserLogOn"
      Outcome = Dialogs.KRUserLogOn()
    Case "KRUserLogOnCombo"
      Outcome = Dialogs.KRUserLogOnCombo()
    Case "KRWhoAmI"
      Dialogs.KRWhoAmI
      Outcome = "closed"
    Case "KRChangePassword"
      Dialogs.KRChangePassword
      Outcome = "closed"
    Case "KRAddUser"
      Outcome = Dialogs.KRAddUser()
    Case "KRUser"
      Dialogs.KRUser
      Outcome = "closed"
    Case "KRSelectDirectory"
      Outcome = Dialogs.KRSelectDirectory(entry(2), entry(3), entry(4))
    Case "KRSelectDirectoryTouch"
      Outcome = Dialogs.KRSelectDirectoryTouch(entry(2))
    Case "KROpenFile"
      Outcome = Dialogs.KROpenFile(entry(2), entry(3), entry(4))
    Case "KRSaveFileAs"
      Outcome = Dialogs.KRSaveFileAs(entry(2), entry(3), entry(4))
    Case "KROpenFileTouch"
      Outcome = Dialogs.KROpenFileTouch(entry(2), entry(3), entry(4))
    Case "Users"
      Outcome = CreateUsers()
    Case "Language"
      Runtime.Language = entry(2)
      Outcome = "language " & Runtime.Language
    Case "Panel"
      Outcome = PanelSettings(entry(2))
  End Select
End Function

Function Arg(entry, position, otherwise)
  If position <= UBound(entry) Then
    Arg = entry(position)
  Else
    Arg = otherwise
  End If
End Function

Function PanelSettings(panel)
  Dim prefix
  If panel Then
    prefix = "KRPanel"
    Dialogs.ButtonMinHeight = 900
    Dialogs.CaptionMinHeight = 600
  Else
    prefix = "KRDialogs"
    Dialogs.ButtonMinHeight = 0
    Dialogs.CaptionMinHeight = 0
  End If
  Dialogs.FontClassCaption = prefix & "Caption"
  Dialogs.FontClassText = prefix & "Text"
  Dialogs.FontClassButton = prefix & "Button"
  Dialogs.FontClassInput = prefix & "Input"
  PanelSettings = prefix & ", buttons at least " & Dialogs.ButtonMinHeight & " twips high"
End Function

' A shift's worth of users without typing them. Each gets a password of its own, printed this once, which has
' to be renewed at the first log-on.
Function CreateUsers()
  Dim users, person, password, result
  Set users = CreateObject("KorvelRuntime.UserAdministration")
  For Each person In Array("Berger|Karin Berger", "Fuchs|Jan Fuchs", "Haas|Mira Haas", _
      "Keller|Tom Keller", "Lang|Ute Lang", "Meier|Eva Meier", "Neumann|Ole Neumann", _
      "Roth|Ida Roth", "Vogel|Nils Vogel")
    person = Split(person, "|")
    password = "start-" & Int(100000000 + 900000000 * Rnd)
    users.CreateUser person(0), person(1), "Shift A", password, "Operator", 0, 3, result
    CreateUsers = CreateUsers & Chr(10) & "  " & person(0) & ": "
    If result = 0 Then
      CreateUsers = CreateUsers & password
    Else
      CreateUsers = CreateUsers & "refused with code " & result
    End If
  Next
End Function
