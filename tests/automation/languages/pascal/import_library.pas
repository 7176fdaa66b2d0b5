{ Writes the Pascal unit that describes a type library: import_library FILE UNIT.pas. The importer is
  Free Pascal's own, as its users have it in their tools. }
program import_library;

{$mode objfpc}{$H+}
{$apptype console}

uses
  SysUtils, ComObj, TypeLib,
  StdOle2; { what an imported unit uses comes along }

var
  Importer: TTypeLibImporter;
begin
  Importer := TTypeLibImporter.Create(nil);
  try
    Importer.InputFileName := WideString(ParamStr(1));
    Importer.OutputFileName := ParamStr(2);
    Importer.Execute;
  except
    on Failure: Exception do
    begin
      WriteLn(ParamStr(1), ': ', Failure.Message);
      Halt(1);
    end;
  end;
end.
