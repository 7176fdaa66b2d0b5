// Time that the user overview itself takes to show 10,000 users anew, against filling the system's
// own list row by row, in one run. The user management is a table in memory; what its calls still
// cost counts for the dialog.
//   bench_userlist [ROUNDS]
#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "BareRuntime.h"
#include "Table.h"
#include "Times.h"
#include "ports/win32/System.h"
#include "ports/win32/Win32Platform.h"
#include "service/KRXDialog.h"
#include "ui/Timer.h"
#include "users/FUser.h"

namespace {

using krx::String;
using krx::ToString;
using krx::bench::Median;

constexpr int kUsers = 10000;
constexpr int kColumns = 7;

class Administration : public krx::host::UserAdministration {
 public:
  Administration() {
    for (int i = 0; i < kUsers; ++i) {
      const String number = ToString(i);
      names_.push_back(u"operator" + number);
      infos_.push_back({u"Operator Number " + number, u"shift of line " + ToString(i % 12), i % 4,
                        i % 7, 0, i % 90});
    }
  }
  std::int32_t ChangeUserPassword(const String&, const krx::Password&,
                                  const krx::Password&) override {
    return 0;
  }
  std::int32_t CreateUser(const krx::host::UserRecord&) override { return 0; }
  std::int32_t RemoveUser(const String&) override { return 0; }
  std::int32_t SetUserActive(const String&, std::int32_t) override { return 0; }
  krx::host::UserClassOfUser GetUserClass(const String&) override { return {u"Operator", true}; }
  krx::host::UserInfo GetUserInfo(const String&) override { return infos_[next_++ % kUsers]; }
  std::int32_t ModifyUser(const krx::host::UserRecord&) override { return 0; }
  std::vector<String> GetUserNames(const String&) override { return names_; }
  krx::host::CurrentUser GetCurrentUser() override { return {u"root", u"Administrator", true}; }
  std::int32_t GetAdministrationMode() override { return 1; }

 private:
  std::vector<String> names_;
  std::vector<krx::host::UserInfo> infos_;
  std::size_t next_ = 0;
};

class Classes : public krx::host::UserClassAdministration {
 public:
  krx::host::UserClassInfo GetUserClassInfo(const String&) override { return {u"Operator", 5}; }
  krx::host::UserClasses GetUserClasses() override { return {}; }
};

class Runtime : public krx::bench::BareRuntime {
 public:
  std::unique_ptr<krx::host::UserAdministration> CreateUserAdministration() override {
    return std::make_unique<Administration>();
  }
  std::unique_ptr<krx::host::UserClassAdministration> CreateUserClassAdministration() override {
    return std::make_unique<Classes>();
  }
};

double Milliseconds(const std::function<void()>& work) {
  const auto start = krx::bench::Clock::now();
  work();
  return krx::bench::Since(start);
}

HWND FindList(HWND form) {
  return FindWindowExW(form, nullptr, WC_LISTVIEWW, nullptr);
}

// The system's list with the same cells, each handed over, and its own sizing of six columns.
class PlainList {
 public:
  PlainList(HWND parent, const krx::ui::ListView& source)
      : source_(source),
        window_(CreateWindowExW(0, WC_LISTVIEWW, L"", kStyle, 0, 0, 600, 300, parent, nullptr,
                                GetModuleHandleW(nullptr), nullptr)) {
    for (int i = 0; i < kColumns; ++i) {
      LVCOLUMNW column{};
      column.mask = LVCF_WIDTH;
      column.cx = 60;
      SendMessageW(window_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                   reinterpret_cast<LPARAM>(&column));
    }
  }
  ~PlainList() { DestroyWindow(window_); }
  PlainList(const PlainList&) = delete;
  PlainList& operator=(const PlainList&) = delete;

  void Fill() const {
    SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    for (int row = 0; row < source_.RowCount(); ++row) {
      for (int column = 0; column < kColumns; ++column)
        Set(row, column);
    }
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    UpdateWindow(window_);
  }
  void SizeColumns() const {
    for (WPARAM column = 0; column + 1 < kColumns; ++column)
      SendMessageW(window_, LVM_SETCOLUMNWIDTH, column, LVSCW_AUTOSIZE);
  }

 private:
  void Set(int row, int column) const {
    String text(source_.Cell(row, column));
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = reinterpret_cast<wchar_t*>(text.data());
    SendMessageW(window_, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                 reinterpret_cast<LPARAM>(&item));
  }

  static constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SINGLESEL;
  const krx::ui::ListView& source_;
  HWND window_;
};

class Bench : public krx::users::FUser {
 public:
  Bench(krx::service::Apartment& apartment, int rounds) : FUser(apartment), rounds_(rounds) {
    tmrStart_.Interval = 100;
    tmrStart_.Enabled = true;
    tmrStart_.Tick = [this] {
      tmrStart_.Enabled = false;
      Run();
      Unload();
    };
  }

 private:
  void Run() {
    const HWND form = GetActiveWindow();
    const HWND list = FindList(form);
    if (!list) {
      std::printf("the list has no window\n");
      return;
    }
    std::vector<double> ours;
    std::vector<double> filled;
    std::vector<double> sized;
    for (int i = 0; i < rounds_; ++i) {
      ours.push_back(Milliseconds([&] {
        RefreshUsers();
        UpdateWindow(list);
      }));
      const PlainList plain(form, lvwUser);
      filled.push_back(Milliseconds([&] { plain.Fill(); }));
      sized.push_back(Milliseconds([&] { plain.SizeColumns(); }));
    }
    const double refresh = Median(ours);
    std::printf("Medians of %d, in ms, over %d users in memory.\n", rounds_, kUsers);
    krx::bench::Table table({"user overview", "ms", "ours to it"});
    const auto add = [&](const char* what, double time) {
      table.Add({what, krx::bench::Decimal(time), krx::bench::Decimal(refresh / time)});
    };
    add("filled anew and painted", refresh);
    add("the system's list, filled row by row", Median(filled));
    add("the same and the system's sizing of its columns", Median(filled) + Median(sized));
    table.Print();
  }

  const int rounds_;
  krx::ui::Timer tmrStart_{*this, u"tmrStart"};
};

}  // namespace

int main(int count, char** arguments) {
  const int rounds = std::max(count > 1 ? std::atoi(arguments[1]) : 10, 1);
  krx::win32::Win32Platform platform;
  Runtime runtime;
  krx::service::Apartment apartment(platform, runtime);
  const auto dialog = krx::service::KRXDialog::Create(apartment);
  Bench(apartment, rounds).ShowUsers();
  return 0;
}
