Attribute VB_Name = "Plant"
' A small plant: log on, ask, choose a recipe file, show who did it. Import this file into a project
' that refers to "KorvelSuite KRXDialogs" (Tools, References) and run LoadRecipe.
Option Explicit

Private Const RecipeFolder As String = "C:\Plant\Recipes"

Public Sub LoadRecipe()
    On Error GoTo Failed
    Debug.Print Report()
    Exit Sub
Failed:
    MsgBox "The plant stops: " & Err.Description, vbCritical
End Sub

Private Function Report() As String
    Dim dialogs As KRXDialogs.KRXDialog
    Dim mixer As String
    Dim recipe As String
    Set dialogs = New KRXDialogs.KRXDialog
    If Not dialogs.KRUserLogOn() Then
        Report = "Nobody has logged on."
        Exit Function
    End If
    Select Case dialogs.KRMsgBoxEx("Which mixer takes the next batch?", vbQuestion + vbDefaultButton3, _
            "Next batch", "", 0, "Mixer &A", "Mixer &B", "&None")
        Case krButton1
            mixer = "mixer A"
        Case krButton2
            mixer = "mixer B"
        Case Else
            Report = "No mixer has been chosen."
            Exit Function
    End Select
    recipe = dialogs.KROpenFile("", RecipeFolder, "Recipes|*.rcp|All files|*.*", False, _
        "Recipe for " & mixer)
    If recipe = "" Then
        Report = "No recipe has been chosen."
        Exit Function
    End If
    dialogs.KRWhoAmI
    Report = "Loaded into " & mixer & ": " & recipe
End Function
