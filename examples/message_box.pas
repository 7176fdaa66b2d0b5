{ Asks a question and prints the answer. Bound early through the unit that Free Pascal's importer
  makes of the component's type library. }
program message_box;

{$mode objfpc}{$H+}
{$apptype console}

uses
  KRXDialogs_1_0_TLB;

const
  YesNoQuestion = 4 + 32;

begin
  if CoKRXDialog.Create.KRMsgBox('Start the pump?', YesNoQuestion, 'Pump', '', 0) = krYes then
    WriteLn('The pump starts.')
  else
    WriteLn('Nothing happens.');
end.
