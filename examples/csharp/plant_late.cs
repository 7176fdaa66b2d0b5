// A small plant: log on, ask, choose a recipe file, show who did it. Late bound, without a reference to the
// type library. .NET Framework: csc plant_late.cs. Otherwise .NET 5 or later: .NET Core before it has no
// `dynamic` for automation objects.
using System;
using System.Runtime.InteropServices;

static class Plant
{
    const int KrButton1 = 11, KrButton2 = 12;
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
        dynamic dialogs = Activator.CreateInstance(Type.GetTypeFromProgID("KRXDialogs.KRXDialog", true));
        if (!dialogs.KRUserLogOn()) return "Nobody has logged on.";
        string mixer;
        switch ((int)dialogs.KRMsgBoxEx("Which mixer takes the next batch?", Question + ThirdIsDefault,
                                        "Next batch", "", 0, "Mixer &A", "Mixer &B", "&None"))
        {
            case KrButton1: mixer = "mixer A"; break;
            case KrButton2: mixer = "mixer B"; break;
            default: return "No mixer has been chosen.";
        }
        string recipe = dialogs.KROpenFile("", RecipeFolder, "Recipes|*.rcp|All files|*.*", false,
                                           "Recipe for " + mixer);
        if (recipe == "") return "No recipe has been chosen.";
        dialogs.KRWhoAmI();
        return "Loaded into " + mixer + ": " + recipe;
    }
}
