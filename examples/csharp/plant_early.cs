// A small plant: log on, ask, choose a recipe file, show who did it. Early bound, by the assembly that is
// made of the type library:
//   tlbimp KRXDialogs.dll /out:Interop.KRXDialogs.dll /namespace:KRXDialogs
//   csc /link:Interop.KRXDialogs.dll plant_early.cs
using System;
using System.Runtime.InteropServices;
using KRXDialogs;

static class Plant
{
    const int Question = 32, ThirdIsDefault = 512;
    const string RecipeFolder = @"C:\Plant\Recipes";

    [STAThread]
    static int Main()
    {
        try
        {
            Console.WriteLine(LoadRecipe());
            return 0;
        }
        catch (COMException failure)
        {
            Console.Error.WriteLine("The plant stops: " + failure.Message);
            return 1;
        }
    }

    static string LoadRecipe()
    {
        var dialogs = new KRXDialog();
        if (!dialogs.KRUserLogOn()) return "Nobody has logged on.";
        string mixer;
        switch (dialogs.KRMsgBoxEx("Which mixer takes the next batch?", Question + ThirdIsDefault,
                                   "Next batch", "", 0, "Mixer &A", "Mixer &B", "&None"))
        {
            case KRMsgBoxResult.krButton1: mixer = "mixer A"; break;
            case KRMsgBoxResult.krButton2: mixer = "mixer B"; break;
            default: return "No mixer has been chosen.";
        }
        string recipe = dialogs.KROpenFile("", RecipeFolder, "Recipes|*.rcp|All files|*.*", false,
                                           "Recipe for " + mixer);
        if (recipe == "") return "No recipe has been chosen.";
        dialogs.KRWhoAmI();
        return "Loaded into " + mixer + ": " + recipe;
    }
}
