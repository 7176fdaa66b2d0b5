{ Compiles a help project to a help file by the library that chmcmd is made of. chmcmd itself writes the folder
  of the project into the targets of contexts, where no viewer finds them.
  usage: helpc PROJECT.hhp, in the folder of the project }
program helpc;

{$mode objfpc}{$H+}

uses
  {$ifdef unix}cthreads,{$endif}
  Classes, SysUtils, ChmFileWriter, ChmWriter;

type
  TCompiler = class
  private
    FProject: TChmProject;
    function Data(const Name: String; out PathInChm: String; out FileName: String;
      var Stream: TStream): Boolean;
    procedure Append(Sender: TObject);
    procedure AddContexts(Writer: TChmWriter);
  public
    procedure Compile(const ProjectFile: String);
  end;

function TCompiler.Data(const Name: String; out PathInChm: String; out FileName: String;
  var Stream: TStream): Boolean;
begin
  TMemoryStream(Stream).LoadFromFile(Name);
  FileName := ExtractFileName(Name);
  PathInChm := '/' + ExtractFilePath(Name);
  Result := False; { go on }
end;

{ Contents and index come behind the pages, byte by byte: the library's own copies of them lose umlauts. }
procedure TCompiler.Append(Sender: TObject);
var
  Writer: TChmWriter;

  function Loaded(const Name: String): TMemoryStream;
  begin
    Result := TMemoryStream.Create;
    Result.LoadFromFile(Name);
  end;

var
  Contents, Index: TMemoryStream;
begin
  Writer := TChmWriter(Sender);
  Index := Loaded(FProject.IndexFileName);
  Writer.AppendIndex(Index);
  Index.Free;
  Contents := Loaded(FProject.TableOfContentsFileName);
  Writer.AppendTOC(Contents);
  Contents.Free;
end;

procedure TCompiler.AddContexts(Writer: TChmWriter);
var
  I: Integer;
  Node: TChmContextNode;
begin
  for I := 0 to FProject.Files.Count - 1 do
  begin
    Node := TChmContextNode(FProject.Files.Objects[I]);
    if Assigned(Node) and (Node.ContextNumber <> 0) then
      Writer.AddContext(Node.ContextNumber, FProject.Files[I]);
  end;
end;

procedure TCompiler.Compile(const ProjectFile: String);
var
  Output: TFileStream;
  Writer: TChmWriter;
begin
  FProject := TChmProject.Create;
  FProject.LoadFromHhp(ProjectFile, False);
  Output := TFileStream.Create(FProject.OutputFileName, fmCreate);
  Writer := TChmWriter.Create(Output, True);
  Writer.OnGetFileData := @Data;
  Writer.OnLastFile := @Append;
  Writer.FilesToCompress.AddStrings(FProject.Files);
  Writer.DefaultPage := FProject.DefaultPage;
  Writer.Title := FProject.Title;
  Writer.FullTextSearch := FProject.MakeSearchable;
  Writer.IndexName := FProject.IndexFileName;
  Writer.TocName := FProject.TableOfContentsFileName;
  Writer.DefaultWindow := FProject.DefaultWindow;
  Writer.LocaleID := FProject.LocaleID;
  Writer.Windows := FProject.Windows;
  AddContexts(Writer);
  Writer.Execute;
  Writer.Free;
  FProject.Free;
end;

begin
  with TCompiler.Create do
  begin
    Compile(ParamStr(1));
    Free;
  end;
end.
