{ Uses the dialogs in each way that Free Pascal has: pascal_client MODE. The description of the
  interface is the unit that was imported from the component. }
program pascal_client;

{$mode objfpc}{$H+}
{$apptype console}

uses
  SysUtils, ActiveX, ComObj, Variants, KRXDialogs_1_0_TLB, host_application;

const
  ClassName = 'KRXDialogs.KRXDialog';
  YesNoQuestion = 4 + 32;
  NoSuchDefault = 256; { the second button of one }

procedure English;
var
  Runtime: OleVariant;
begin
  Runtime := CreateOleObject('KorvelRuntime.RuntimeSettings');
  Runtime.Language := 'en';
end;

function Early: IKRXDialog;
begin
  Result := CoKRXDialog.Create;
end;

function ByDispinterface: IKRXDialogDisp;
begin
  Result := CreateComObject(CLASS_KRXDialog) as IKRXDialogDisp;
end;

procedure AskEarly;
var
  Dialogs: IKRXDialog;
  Height: Single;
  Host: IDispatch;
begin
  Dialogs := Early;
  Dialogs.FontClassText := 'KRPanelText';
  WriteLn(Dialogs.FontClassText);
  Height := 900;
  Dialogs.Set_ButtonMinHeight(Height);
  WriteLn(Dialogs.ButtonMinHeight:0:0);
  Host := THostApplication.Create;
  Dialogs.SetHostApp(Host);
  WriteLn(Dialogs.KRMsgBox('Start the pump?', YesNoQuestion, 'Pump', '', 0));
  if Dialogs.KRMsgBoxEx('Which way?', 0, '', '', 0, '&Left', '&Right', '', 0) = krButton2 then
    WriteLn('right');
end;

procedure AskByDispinterface;
var
  Dialogs: IKRXDialogDisp;
  Host: IDispatch;
begin
  Dialogs := ByDispinterface;
  Dialogs.FontClassText := 'KRPanelText';
  WriteLn(Dialogs.FontClassText);
  Dialogs.ButtonMinHeight := 900;
  WriteLn(Dialogs.ButtonMinHeight:0:0);
  Host := THostApplication.Create;
  Dialogs.SetHostApp(Host);
  WriteLn(Dialogs.KRMsgBox('Start the pump?', YesNoQuestion, 'Pump', '', 0));
  if Dialogs.KRMsgBoxEx('Which way?', 0, '', '', 0, '&Left', '&Right', '', 0) = krButton2 then
    WriteLn('right');
end;

procedure AskLate;
var
  Dialogs: OleVariant;
  Host: IDispatch;
begin
  Dialogs := CreateOleObject(ClassName);
  Dialogs.FontClassText := 'KRPanelText';
  WriteLn(Dialogs.FontClassText);
  Dialogs.ButtonMinHeight := 900;
  WriteLn(Double(Dialogs.ButtonMinHeight):0:0);
  Host := THostApplication.Create;
  Dialogs.SetHostApp(Host);
  WriteLn(Dialogs.KRMsgBox('Start the pump?', YesNoQuestion, 'Pump'));
  if Dialogs.KRMsgBoxEx('Which way?', 0, '', '', 0, '&Left', '&Right') = krButton2 then
    WriteLn('right');
end;

procedure AskByName;
var
  Dialogs: OleVariant;
begin
  Dialogs := CreateOleObject(ClassName);
  WriteLn(Dialogs.KRMsgBox(Text := 'Start the pump?', Title := 'Pump', Style := YesNoQuestion));
  if Dialogs.KRMsgBoxEx('Which way?', Button2 := '&Right', Button1 := '&Left', Title := 'Conveyor') =
    krButton2 then
    WriteLn('right');
end;

{ Texts and truth values as results. }
procedure Select;
var
  Late: OleVariant;
begin
  English;
  WriteLn(Early.KRSelectDirectory('C:\windows', True, 'Where?'));
  WriteLn(ByDispinterface.KRSelectDirectory('C:\windows', True, 'Where?'));
  Late := CreateOleObject(ClassName);
  WriteLn(Late.KRSelectDirectory('C:\windows', Title := 'Where?'));
end;

type
  TCall = procedure;

procedure FailEarly;
begin
  Early.KRMsgBox('Text', NoSuchDefault, 'Title', '', 0);
end;

procedure FailByDispinterface;
begin
  ByDispinterface.KRMsgBox('Text', NoSuchDefault, 'Title', '', 0);
end;

procedure FailLate;
var
  Dialogs: OleVariant;
begin
  Dialogs := CreateOleObject(ClassName);
  Dialogs.KRMsgBox('Text', NoSuchDefault, 'Title');
end;

procedure FailByName;
var
  Dialogs: OleVariant;
begin
  Dialogs := CreateOleObject(ClassName);
  Dialogs.KRMsgBox('Text', Style := NoSuchDefault);
end;

procedure TellFailure(const Way: string; Call: TCall);
begin
  try
    Call();
    WriteLn(Way, ': no failure');
  except
    on Failure: EOleException do
      WriteLn(Way, ': ', HexStr(Failure.ErrorCode, 8), ' ', Failure.Source, ': ', Failure.Message);
    on Failure: EOleSysError do
      WriteLn(Way, ': ', HexStr(Failure.ErrorCode, 8), ' without a source: ', Failure.Message);
    on Failure: Exception do
      WriteLn(Way, ': ', Failure.ClassName, ': ', Failure.Message);
  end;
end;

procedure Fail;
begin
  TellFailure('early', @FailEarly);
  TellFailure('dispinterface', @FailByDispinterface);
  TellFailure('late', @FailLate);
  TellFailure('named', @FailByName);
end;

begin
  case ParamStr(1) of
    'early': AskEarly;
    'dispinterface': AskByDispinterface;
    'late': AskLate;
    'named': AskByName;
    'select': Select;
    'failures': Fail;
  else
    Halt(2);
  end;
end.
