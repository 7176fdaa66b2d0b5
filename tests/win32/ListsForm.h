#pragma once

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "TestForm.h"
#include "ui/RowList.h"

namespace krx::test {

// A list of folders with pictures, as many rows as wanted; the rows are made when they are asked
// for.
class FolderList final : public ui::RowList {
 public:
  FolderList(ui::Form& form, String name) : RowList(form, std::move(name)) {}

  void Resize(int rows) {
    rows_ = rows;
    RowsReplaced();
  }
  void Grow(int rows) {
    rows_ = rows;
    RowsAdded();
  }
  int RowCount() const override { return rows_; }
  StringView Cell(int row, int) const override {
    ++Asked;
    AskedRows.insert(row);
    if (WhenAsked) WhenAsked();
    return text_ = u"folder " + ToString(row);
  }
  bool HasImages() const override { return true; }
  Image RowImage(int row) const override {
    constexpr Image kImages[] = {Image::Drive, Image::OpenFolder, Image::Folder, Image::File};
    return kImages[row % 4];
  }
  int Indent(int row) const override { return row % 4; }

  std::function<void()> WhenAsked;
  mutable int Asked = 0;
  mutable std::set<int> AskedRows;

 private:
  int rows_ = 0;
  mutable String text_;
};

// A form with a report, a touch grid, a plain list, both combo boxes and a frame with a caption;
// Esc closes it.
class ListsForm : public FormWithCross {
 public:
  explicit ListsForm(ui::Platform& platform) : FormWithCross(platform, u"FLists") {
    Width = 9000;
    Height = 6600;
    lvw.Place({120, 120, 4200, 3000});
    lvw.Columns = {{u"Name", 1500}, {u"State", 1200}, {u"Comment", 0}};
    grd.Place({4500, 120, 4300, 3000});
    grd.Columns = {{u"", 600}, {u"", 0}};
    lst.Place({120, 3300, 4200, 2400});
    cbo.Place({4500, 3300, 2000, 330});
    cboTouch.Place({6700, 3300, 2000, 480});
    fra.Place({4500, 4100, 2000, 1200});
    fra.Caption = u"&Frame";
    keyOK.Place({180, 6000, 1215, 375});
    keyOK.Caption = u"&OK";
    MakeCross(keyClose, {8600, 6000, 240, 240});
    keyClose.Click = [this] {
      ++Cancels;
      Hide();
    };
  }

  // Rows "a 0", "b 1" ... whose letters begin again after 26 rows.
  static std::vector<std::vector<String>> Rows(int count) {
    std::vector<std::vector<String>> rows;
    for (int i = 0; i < count; ++i)
      rows.push_back({String(1, static_cast<char16_t>(u'a' + i % 26)) + u" " + ToString(i),
                      u"active", u"row " + ToString(i)});
    return rows;
  }
  static std::vector<std::vector<String>> FingerRows(int count) {
    std::vector<std::vector<String>> rows;
    for (int i = 0; i < count; ++i)
      rows.push_back({i % 3 == 0 ? u" +" : u"", u"directory " + ToString(i)});
    return rows;
  }

  ui::ListView lvw{*this, u"lvw"};
  ui::KRXGrid grd{*this, u"grd"};
  FolderList lst{*this, u"lst"};
  ui::ComboBox cbo{*this, u"cbo"};
  ui::KRXComboBox cboTouch{*this, u"cboTouch"};
  ui::Frame fra{*this, u"fra"};
  ui::KRXKey keyOK{*this, u"keyOK"};
  ui::KRXKey keyClose{*this, u"keyClose"};
  int Cancels = 0;
};

}  // namespace krx::test
