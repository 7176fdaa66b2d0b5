#include "files/Register.h"

#include "files/FFileSelect.h"
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

}  // namespace

void Register(service::Apartment& apartment) {
  apartment.Dialogs.SelectDirectory = SelectDirectory;
  apartment.Dialogs.SelectFile = SelectFile;
}

}  // namespace krx::files
