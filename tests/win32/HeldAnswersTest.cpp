#include <gtest/gtest.h>

#include <iostream>

#include "Desk.h"
#include "FolderTree.h"
#include "HeldFiles.h"
#include "Person.h"
#include "RealDisk.h"
#include "driver/List.h"

// Each question of this machine's that a selection dialog asks while it opens is never answered,
// one after another: its window is painted and Cancel ends it all the same.
namespace krx::test {

namespace {

struct SelectionDialog {
  std::string Name;
  String Form;
  std::function<String(service::KRXDialog&, const String&)> Call;
  // Answers of its opening: by mouse those of the start directory and the label of one drive, by
  // touch whether there is a start directory, its folders, and which of them have any.
  int AtLeast;

  bool Touch() const { return Form.ends_with(u"Touch"); }
};

class HeldAnswers : public testing::TestWithParam<SelectionDialog> {
 protected:
  static constexpr long kLongestWait = 100;  // milliseconds

  HeldAnswers() {
    for (const StringView folder : {u"Alpha", u"Alpha\\In", u"Logs", u"Logs\\Old"})
      tree_.AddFolder(folder);
    tree_.AddFile(u"plan.bmp");
  }

  // One that is there, one that is missing, one of a share, and for the mouse one on a drive
  // without a medium.
  std::vector<String> Starts() const {
    std::vector<String> starts{tree_.PathOf(u"Logs"), tree_.PathOf(kMissing)};
    if (share_.Made()) starts.push_back(String(LocalShare::kPath) + u"\\Logs");
    if (!GetParam().Touch()) starts.push_back(String(EmptyDrive::kDrive) + u"\\Data");
    return starts;
  }

  // Nothing more will be asked until somebody acts.
  bool AllAsked() const {
    return GetParam().Touch() ? held_.ProbesAsked() > 0 : held_.DrivesAsked() == drives_;
  }
  static bool IsPainted(HWND form) { return !GetUpdateRect(form, nullptr, FALSE); }

  // Waits until the dialog's thread has done what it is at.
  static void Settle(HWND form) { SendMessageW(form, WM_NULL, 0, 0); }

  // Opens the first one that is listed: the root, the folder above, or a folder of a root.
  void OpenAnother(Person& person, HWND form) {
    const drive::List list(
        drive::Window(person.Control(form, GetParam().Touch() ? u"grdFolders" : u"dirSelect")));
    if (GetParam().Touch()) {
      person.Await([&] { return list.Count() > 0; }, "the folders");
      list.DoubleClick(0);
      person.Await([&] { return held_.LookedFor() || held_.ProbesAsked() > 1; }, "the folders");
    } else {
      const int before = held_.ReadingsAsked();
      list.Click(0);
      person.Await([&] { return held_.ReadingsAsked() > before; }, "the directory");
    }
    Settle(form);
  }
  // Without a medium there may be no list, and the folders of a drive's root are not ours.
  bool HasAnother(const String& start) const {
    return !start.starts_with(EmptyDrive::kDrive) &&
           (!GetParam().Touch() || start != tree_.PathOf(kMissing));
  }

  // Until something is so the dialog's thread may wait a moment.
  template <class Condition>
  void Await(Person& person, const char* what, Condition condition) {
    person.Await(condition, what);
    Judge(what);
  }
  void Judge(const char* what) {
    const long waited = held_.Waited();
    EXPECT_LE(waited - judged_, kLongestWait) << what;
    longest_ = std::max(longest_, waited - judged_);
    judged_ = waited;
  }

  // Opens the dialog while an answer is held, works with it and presses Cancel. False when there is
  // no such answer.
  bool OpenAndCancel(const String& start, int number) {
    held_.Hold(number);
    judged_ = 0;
    String chosen = u"not called";
    RunWith([&] { chosen = GetParam().Call(*desk_.Dialog, start); },
            [&](Person& person) {
              const HWND form = person.AwaitForm(GetParam().Form);
              Await(person, "painted", [&] { return IsPainted(form); });
              Await(person, "asked", [&] { return held_.LookedFor() || AllAsked(); });
              if (!held_.LookedFor() && HasAnother(start)) OpenAnother(person, form);
              Judge("another folder");
              person.Click(person.Control(form, u"keyCancel"));
            });
    Judge("gone");
    EXPECT_EQ(chosen, u"");
    return held_.Asked();
  }

  static constexpr StringView kMissing = u"Gone\\Deeper";
  FolderTree tree_;
  const LocalShare share_{tree_.Path()};
  const EmptyDrive empty_;
  DeskOn<HeldPlatform> desk_;
  HeldFiles& held_ = desk_.Platform.Held;
  const int drives_ = static_cast<int>(held_.Drives().size());
  long judged_ = 0;  // of the waiting in a run
  long longest_ = 0;
};

TEST_P(HeldAnswers, HangNoWindow) {
  for (const String& start : Starts()) {
    SCOPED_TRACE(ToUtf8(start));
    int number = 1;
    while (OpenAndCancel(start, number) && !HasFailure())
      ++number;
    EXPECT_GT(number, GetParam().AtLeast);
    std::cout << "answers held in turn: " << number - 1 << "; longest wait " << longest_ << " ms\n";
  }
}

std::string NameOfDialog(const testing::TestParamInfo<SelectionDialog>& dialog) {
  return dialog.param.Name;
}

INSTANTIATE_TEST_SUITE_P(
    Dialogs, HeldAnswers,
    testing::Values(SelectionDialog{"SelectDirectory", u"FSelectDirectory",
                                    [](service::KRXDialog& dialog, const String& start) {
                                      return dialog.KRSelectDirectory({start, true, {}});
                                    },
                                    3},
                    SelectionDialog{"OpenFile", u"FFileSelect",
                                    [](service::KRXDialog& dialog, const String& start) {
                                      return dialog.KROpenFile({u"name", start, {}, true, {}});
                                    },
                                    3},
                    SelectionDialog{"SaveFileAs", u"FFileSelect",
                                    [](service::KRXDialog& dialog, const String& start) {
                                      return dialog.KRSaveFileAs({u"name", start, {}, false, {}});
                                    },
                                    3},
                    SelectionDialog{"SelectDirectoryTouch", u"FDirectorySelectTouch",
                                    [](service::KRXDialog& dialog, const String& start) {
                                      return dialog.KRSelectDirectoryTouch({start, true, {}});
                                    },
                                    4},
                    SelectionDialog{"OpenFileTouch", u"FFileSelectTouch",
                                    [](service::KRXDialog& dialog, const String& start) {
                                      return dialog.KROpenFileTouch({{}, start, {}, true, {}});
                                    },
                                    4}),
    NameOfDialog);

}  // namespace

}  // namespace krx::test
