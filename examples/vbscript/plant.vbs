' A small plant: log on, ask, choose a recipe file, show who did it: cscript plant.vbs
Option Explicit
Const krButton1 = 11, krButton2 = 12
Const RecipeFolder = "C:\Plant\Recipes"

Dim report
On Error Resume Next
report = LoadRecipe()
If Err.Number <> 0 Then
  WScript.Echo "The plant stops: " & Err.Description
  WScript.Quit 1
End If
WScript.Echo report

Function LoadRecipe()
  Dim dialogs, mixer, recipe
  Set dialogs = CreateObject("KRXDialogs.KRXDialog")
  If Not dialogs.KRUserLogOn() Then
    LoadRecipe = "Nobody has logged on."
    Exit Function
  End If
  Select Case dialogs.KRMsgBoxEx("Which mixer takes the next batch?", vbQuestion + vbDefaultButton3, _
      "Next batch", "", 0, "Mixer &A", "Mixer &B", "&None")
    Case krButton1
      mixer = "mixer A"
    Case krButton2
      mixer = "mixer B"
    Case Else
      LoadRecipe = "No mixer has been chosen."
      Exit Function
  End Select
  recipe = dialogs.KROpenFile("", RecipeFolder, "Recipes|*.rcp|All files|*.*", False, "Recipe for " & mixer)
  If recipe = "" Then
    LoadRecipe = "No recipe has been chosen."
    Exit Function
  End If
  dialogs.KRWhoAmI
  LoadRecipe = "Loaded into " & mixer & ": " & recipe
End Function
