// A small plant: log on, ask, choose a recipe file, show who did it: cscript plant.js
var krButton1 = 11, krButton2 = 12;
var question = 32, thirdIsDefault = 512;
var recipeFolder = "C:\\Plant\\Recipes";

function loadRecipe() {
  var dialogs = new ActiveXObject("KRXDialogs.KRXDialog");
  if (!dialogs.KRUserLogOn()) return "Nobody has logged on.";
  var mixer;
  switch (dialogs.KRMsgBoxEx("Which mixer takes the next batch?", question + thirdIsDefault,
                             "Next batch", "", 0, "Mixer &A", "Mixer &B", "&None")) {
    case krButton1:
      mixer = "mixer A";
      break;
    case krButton2:
      mixer = "mixer B";
      break;
    default:
      return "No mixer has been chosen.";
  }
  var recipe = dialogs.KROpenFile("", recipeFolder, "Recipes|*.rcp|All files|*.*", false,
                                  "Recipe for " + mixer);
  if (recipe === "") return "No recipe has been chosen.";
  dialogs.KRWhoAmI();
  return "Loaded into " + mixer + ": " + recipe;
}

try {
  WScript.Echo(loadRecipe());
} catch (failure) {
  WScript.Echo("The plant stops: " + failure.description);
  WScript.Quit(1);
}
