{ A host application that tells the dialogs its name. }
unit host_application;

{$mode objfpc}{$H+}

interface

type
  THostApplication = class(TInterfacedObject, IDispatch)
    function GetTypeInfoCount(out Count: LongInt): HResult; stdcall;
    function GetTypeInfo(Index, LocaleID: LongInt; out TypeInfo): HResult; stdcall;
    function GetIDsOfNames(const IID: TGUID; Names: Pointer; NameCount, LocaleID: LongInt;
      DispIDs: Pointer): HResult; stdcall;
    function Invoke(DispID: LongInt; const IID: TGUID; LocaleID: LongInt; Flags: Word; var Params;
      VarResult, ExcepInfo, ArgErr: Pointer): HResult; stdcall;
  end;

implementation

uses
  Windows, ActiveX, Variants;

const
  NameID = 1;

function THostApplication.GetTypeInfoCount(out Count: LongInt): HResult; stdcall;
begin
  Count := 0;
  Result := S_OK;
end;

function THostApplication.GetTypeInfo(Index, LocaleID: LongInt; out TypeInfo): HResult; stdcall;
begin
  Pointer(TypeInfo) := nil;
  Result := E_NOTIMPL;
end;

function THostApplication.GetIDsOfNames(const IID: TGUID; Names: Pointer; NameCount,
  LocaleID: LongInt; DispIDs: Pointer): HResult; stdcall;
begin
  if (NameCount <> 1) or (WideString(PPOleStr(Names)^) <> 'EXEName') then
    Exit(DISP_E_UNKNOWNNAME);
  PLongInt(DispIDs)^ := NameID;
  Result := S_OK;
end;

function THostApplication.Invoke(DispID: LongInt; const IID: TGUID; LocaleID: LongInt; Flags: Word;
  var Params; VarResult, ExcepInfo, ArgErr: Pointer): HResult; stdcall;
begin
  if DispID <> NameID then
    Exit(DISP_E_MEMBERNOTFOUND);
  POleVariant(VarResult)^ := WideString('Plant control');
  Result := S_OK;
end;

end.
