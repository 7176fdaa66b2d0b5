{ A small plant: log on, ask, choose a recipe file, show who did it. Bound early by the unit that Free Pascal's
  importer makes of the component's type library. }
program plant;

{$mode objfpc}{$H+}
{$apptype console}

uses
  SysUtils, ComObj, KRXDialogs_1_0_TLB;

const
  Question = 32;
  ThirdIsDefault = 512;
  RecipeFolder = 'C:\Plant\Recipes';

function LoadRecipe: WideString;
var
  Dialogs: IKRXDialog;
  Mixer, Recipe: WideString;
begin
  Dialogs := CoKRXDialog.Create;
  if not Dialogs.KRUserLogOn then
    Exit('Nobody has logged on.');
  case Dialogs.KRMsgBoxEx('Which mixer takes the next batch?', Question + ThirdIsDefault,
    'Next batch', '', 0, 'Mixer &A', 'Mixer &B', '&None', 0) of
    krButton1: Mixer := 'mixer A';
    krButton2: Mixer := 'mixer B';
  else
    Exit('No mixer has been chosen.');
  end;
  Recipe := Dialogs.KROpenFile('', RecipeFolder, 'Recipes|*.rcp|All files|*.*', False,
    'Recipe for ' + Mixer);
  if Recipe = '' then
    Exit('No recipe has been chosen.');
  Dialogs.KRWhoAmI;
  Result := 'Loaded into ' + Mixer + ': ' + Recipe;
end;

begin
  try
    WriteLn(LoadRecipe);
  except
    on Failure: EOleError do
    begin
      WriteLn(StdErr, 'The plant stops: ', Failure.Message);
      Halt(1);
    end;
  end;
end.
