#pragma once

#include <memory>

#include "service/Apartment.h"
#include "service/FileRequest.h"
#include "service/MessageBoxRequest.h"

namespace krx::service {

// The dialog service that clients create: the shared settings of the apartment as properties, and
// one method per dialog, which opens it, waits for the operator and returns the outcome.
class KRXDialog : public std::enable_shared_from_this<KRXDialog> {
 public:
  // The first object of an apartment sets the shared settings to their defaults and is kept alive
  // by them.
  static std::shared_ptr<KRXDialog> Create(Apartment& apartment);
  // Any object that goes clears the host application and the shared dialog service; the next one
  // created starts from the defaults again. This reset is meant.
  ~KRXDialog();
  KRXDialog(const KRXDialog&) = delete;
  KRXDialog& operator=(const KRXDialog&) = delete;

  // Every operation fails with runtime error 91 once the apartment has ended.

  // Settings of the whole apartment, heights in twips. Any value is stored as given.
  SharedSettings& Settings() { return TheApartment().Shared; }

  // The application whose program name titles message boxes without a title; none is accepted, and
  // a box that then needs the name fails with runtime error 91.
  void SetHostApp(std::shared_ptr<host::Application> application);

  // Shows a message box; returns the standard result code of the button, or that of the default
  // button when the box is closed otherwise. Runtime error 13 when the style's default button has
  // no result code.
  std::int32_t KRMsgBox(String text, std::int32_t style = 0, String title = {},
                        String help_file = {}, std::int32_t context = 0);
  // The same with up to three free buttons (results 11, 12, 13) and, after a number of seconds,
  // the default button's result.
  std::int32_t KRMsgBoxEx(String text, std::int32_t style, String title, String help_file,
                          std::int32_t context, FreeButtons extra);

  // Logs a user on, by typed name or by a name from the list of all users. True when a user has
  // logged on; a failing call of the user management raises its own error. Where the runtime has a
  // notice, it comes first, and whoever does not acknowledge it has given up.
  bool KRUserLogOn();
  bool KRUserLogOnCombo();
  // Shows who is logged on.
  void KRWhoAmI();
  // Changes the password of the user who is logged on.
  void KRChangePassword();
  // Creates a user; true when one has been created. Failing calls raise their own error.
  bool KRAddUser();
  // Lists the users and lets the operator add, change, remove, activate and deactivate them.
  void KRUser();

  // Selects a directory or a file and returns its path; empty when the operator gave up. What is
  // not allowed to change up stays at the start directory and below; the touch dialogs confine
  // nobody. A start directory that does not exist is no error.
  String KRSelectDirectory(const DirectoryRequest& request);
  String KRSelectDirectoryTouch(const DirectoryRequest& request);
  String KRSaveFileAs(const FileRequest& request);
  String KROpenFile(const FileRequest& request);
  String KROpenFileTouch(const FileRequest& request);

 private:
  explicit KRXDialog(const Apartment& apartment) : apartment_(apartment.Handle()) {}
  void Initialise();
  bool NoticeIsAcknowledged();
  Apartment& TheApartment() const;

  const std::weak_ptr<Apartment> apartment_;
};

}  // namespace krx::service
