#include "failures/Plant.h"

namespace krx::test {

namespace {

constexpr float kPoints = 8;
constexpr std::size_t kPointers = 10000;

// Counts the living objects of a runtime.
class Counted {
 public:
  explicit Counted(PlainRuntime& runtime) : Runtime(runtime) { ++Runtime.Live; }
  ~Counted() { --Runtime.Live; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  PlainRuntime& Runtime;
};

class PlainTexts : public host::TextService, Counted {
 public:
  using Counted::Counted;
  String GetText(StringView key, std::int32_t) override {
    return key == u"KeyboardLayout" ? Runtime.Layout : String(key);
  }
  String ResolveText(StringView reference) override { return String(reference.substr(1)); }
};

class PlainFonts : public host::FontService, Counted {
 public:
  using Counted::Counted;
  void SelectFontClass(StringView name) override { name_ = name; }
  Font GetFont() override { return {name_, kPoints}; }

 private:
  String name_;
};

class PlainSession : public host::UserSession, Counted {
 public:
  using Counted::Counted;
  std::int32_t LogOnUser(const String&, const Password&) override {
    return Runtime.NextCode(host::LogOnSucceeded);
  }
  std::int32_t LogOffUser() override { return Runtime.NextCode(0); }
};

class PlainAdministration : public host::UserAdministration, Counted {
 public:
  using Counted::Counted;
  std::int32_t ChangeUserPassword(const String&, const Password&, const Password&) override {
    return Runtime.NextCode(host::ChangePasswordSucceeded);
  }
  std::int32_t CreateUser(const host::UserRecord&) override {
    return Runtime.NextCode(host::CreateUserSucceeded);
  }
  std::int32_t RemoveUser(const String&) override { return Runtime.NextCode(0); }
  std::int32_t SetUserActive(const String&, std::int32_t) override { return Runtime.NextCode(0); }
  host::UserClassOfUser GetUserClass(const String&) override { return {u"Operator", true}; }
  host::UserInfo GetUserInfo(const String& user) override {
    return {u"The full name of " + user, u"a comment on " + user, 0, 3, 0, 90};
  }
  std::int32_t ModifyUser(const host::UserRecord&) override {
    return Runtime.NextCode(host::ModifyUserSucceeded);
  }
  std::vector<String> GetUserNames(const String&) override { return Runtime.Names; }
  host::CurrentUser GetCurrentUser() override { return Runtime.Current; }
  std::int32_t GetAdministrationMode() override { return 1; }
};

class PlainClasses : public host::UserClassAdministration, Counted {
 public:
  using Counted::Counted;
  host::UserClassInfo GetUserClassInfo(const String& name) override {
    return {u"The class of the " + name, 5};
  }
  host::UserClasses GetUserClasses() override { return {{u"Guest", u"Operator"}, {1, 5}}; }
};

}  // namespace

std::unique_ptr<host::TextService> PlainRuntime::CreateTextService() {
  return std::make_unique<PlainTexts>(*this);
}
std::unique_ptr<host::FontService> PlainRuntime::CreateFontService() {
  return std::make_unique<PlainFonts>(*this);
}
std::unique_ptr<host::UserSession> PlainRuntime::CreateUserSession() {
  return std::make_unique<PlainSession>(*this);
}
std::unique_ptr<host::UserAdministration> PlainRuntime::CreateUserAdministration() {
  return std::make_unique<PlainAdministration>(*this);
}
std::unique_ptr<host::UserClassAdministration> PlainRuntime::CreateUserClassAdministration() {
  return std::make_unique<PlainClasses>(*this);
}

std::int32_t PlainRuntime::NextCode(std::int32_t success) {
  if (Codes.empty()) return success;
  const std::int32_t code = Codes.front();
  Codes.pop_front();
  return code;
}

Plant::Plant() {
  headless::SimulatedFiles& machine = Platform.Machine;
  machine.AddDrive(u"D:", folders::DriveType::Removable);
  machine.AddDrive(u"E:", folders::DriveType::Optical, false);
  for (const StringView folder : {u"C:\\Data\\Alpha", u"C:\\Data\\The logs of all pumps\\Old",
                                  u"C:\\Data\\Zeta", u"C:\\Windows", u"D:\\Backup"})
    machine.AddFolder(folder);
  for (const StringView file :
       {u"C:\\boot.ini", u"C:\\Data\\readme.txt", u"C:\\Data\\a plan of the whole plant.bmp",
        u"C:\\Data\\The logs of all pumps\\today.log", u"D:\\Backup\\all.txt"})
    machine.AddFile(file);
  // The end of an hourglass notes another pointer, which must not take memory.
  Platform.Pointers.reserve(kPointers);
  Runtime.Names = {u"anna", u"a user with a long name", u"carl"};
  Runtime.Current = {u"root", u"Operator", true};
}

}  // namespace krx::test
