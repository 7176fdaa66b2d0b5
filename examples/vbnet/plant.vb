' A small plant: log on, ask, choose a recipe file, show who did it. Early bound, by the assembly that is
' made of the type library:
'   tlbimp KRXDialogs.dll /out:Interop.KRXDialogs.dll /namespace:KRXDialogs
'   vbc /link:Interop.KRXDialogs.dll plant.vb
Option Strict On
Imports System
Imports System.Runtime.InteropServices
Imports KRXDialogs

Module Plant
    Private Const Question As Integer = 32
    Private Const ThirdIsDefault As Integer = 512
    Private Const RecipeFolder As String = "C:\Plant\Recipes"

    <STAThread>
    Public Function Main() As Integer
        Try
            Console.WriteLine(LoadRecipe())
            Return 0
        Catch failure As COMException
            Console.Error.WriteLine("The plant stops: " & failure.Message)
            Return 1
        End Try
    End Function

    Private Function LoadRecipe() As String
        Dim dialogs As New KRXDialog()
        If Not dialogs.KRUserLogOn() Then Return "Nobody has logged on."
        Dim mixer As String
        Select Case dialogs.KRMsgBoxEx("Which mixer takes the next batch?", Question + ThirdIsDefault,
                                       "Next batch", "", 0, "Mixer &A", "Mixer &B", "&None")
            Case KRMsgBoxResult.krButton1
                mixer = "mixer A"
            Case KRMsgBoxResult.krButton2
                mixer = "mixer B"
            Case Else
                Return "No mixer has been chosen."
        End Select
        Dim recipe As String = dialogs.KROpenFile("", RecipeFolder, "Recipes|*.rcp|All files|*.*", False,
                                                  "Recipe for " & mixer)
        If recipe = "" Then Return "No recipe has been chosen."
        dialogs.KRWhoAmI()
        Return "Loaded into " & mixer & ": " & recipe
    End Function
End Module
