#include "files/Register.h"

#include "files/FDirectorySelectTouch.h"
#include "files/FFileSelect.h"
#include "files/FFileSelectTouch.h"
#include "files/FSelectDirectory.h"

namespace krx::files {

namespace {

String SelectDirectory(service::Apartment& apartment, const service::DirectoryRequest& request) {
  FSelectDirectory form(apartment);
  form.SetFonts();
  form.SetTexts(request.StartDirectory, request.Title);
  form.CalcPositions();
  form.txtDirectory.Locked = !request.AllowChangeUp;
  ShowUsable(form.txtDirectory, request.AllowChangeUp);
  form.drvSelect.Enabled = request.AllowChangeUp;
  ShowUsable(form.drvSelect, request.AllowChangeUp);
  form.ShowModal();
  return form.Result;
}

String SelectFile(service::Apartment& apartment, const service::FileRequest& request,
                  service::FileDialogKind kind) {
  FFileSelect form(apartment);
  form.SetFonts();
  form.SetTexts(request.FileName, request.StartDirectory, request.Title, kind);
  form.SetFilter(request.Filter);
  form.CalcPositions();
  form.drvSelect.Enabled = request.AllowChangeUp;
  ShowUsable(form.drvSelect, request.AllowChangeUp);
  form.ShowModal();
  return form.Result;
}

String SelectDirectoryTouch(service::Apartment& apartment,
                            const service::DirectoryRequest& request) {
  FDirectorySelectTouch form(apartment);
  return form.SelectDirectory(request.StartDirectory, request.AllowChangeUp, request.Title);
}

// Whether the operator may change up is not handed on: touch confines nobody. This is meant.
String SelectFileTouch(service::Apartment& apartment, const service::FileRequest& request) {
  FFileSelectTouch form(apartment);
  form.SetTexts(request.FileName, request.StartDirectory, request.Title, service::kFileOpen);
  form.SetFilter(request.Filter);
  form.ShowModal();
  return form.FileName();
}

}  // namespace

void Register(service::Apartment& apartment) {
  apartment.Dialogs.SelectDirectory = SelectDirectory;
  apartment.Dialogs.SelectDirectoryTouch = SelectDirectoryTouch;
  apartment.Dialogs.SelectFile = SelectFile;
  apartment.Dialogs.SelectFileTouch = SelectFileTouch;
}

}  // namespace krx::files
