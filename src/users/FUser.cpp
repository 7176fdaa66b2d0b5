#include "users/FUser.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "service/MKRXDialog.h"
#include "service/Skip.h"
#include "users/FAddUser.h"

namespace krx::users {

namespace {

using service::kButtonGap;  // also from the frame's caption down to the list
using service::kMargin;     // also of the list in its frame
using service::Skip;

// Lengths of this form in twips.
constexpr Twips kListWidth = 13500;    // as long as the screen has room
constexpr Twips kListHeight = 4500;    // likewise
constexpr Twips kSmallestList = 2400;  // in both directions
constexpr Twips kCommentWidth = 3000;

constexpr std::array<StringView, 7> kColumns{
    u"lblName",          u"lblState",  u"lblFullName", u"lblUserClass", u"lblRemainingLogOns",
    u"lblRenewPassword", u"lblComment"};

// Texts of the user states, each looked up when it is first needed. A state without a text repeats
// the one shown before it; this is meant.
class StateTexts {
 public:
  template <class Lookup>
  const String& Next(std::int32_t state, Lookup lookup) {
    constexpr std::array<StringView, 4> kKeys{u"enmStateActive", u"enmStateDeactivated",
                                              u"enmStateLocked", u"enmStateActiveChangePassword"};
    if (state >= 0 && state < static_cast<std::int32_t>(kKeys.size())) {
      std::optional<String>& text = texts_[static_cast<std::size_t>(state)];
      if (!text) text = lookup(kKeys[static_cast<std::size_t>(state)]);
      shown_ = *text;
    }
    return shown_;
  }

 private:
  std::array<std::optional<String>, 4> texts_;
  String shown_;
};

}  // namespace

FUser::FUser(service::Apartment& apartment)
    : UserForm(apartment, u"FUser", u"fraUser"),
      administration_(apartment.Runtime, &host::Runtime::CreateUserAdministration),
      classes_(apartment.Runtime, &host::Runtime::CreateUserClassAdministration) {
  std::vector<ui::RowList::Column> columns;
  columns.reserve(kColumns.size());
  for (const StringView key : kColumns)
    columns.push_back({.Title = {}, .Width = 0, .Tag = String(key)});
  columns.back().Width = kCommentWidth;
  lvwUser.Columns = std::move(columns);
  fraUser.Caption = u"Benutzer";
  keyAddUser.Caption = u"&Hinzuf\u00fcgen";
  keyChangeUser.Caption = u"&\u00c4ndern";
  keyRemoveUser.Caption = u"&Entfernen";
  keyActivateUser.Caption = u"&Aktivieren";
  keyDeactivateUser.Caption = u"&Deaktivieren";
  fraUser.TabIndex = 0;  // its access key leads to the list
  lvwUser.TabIndex = 1;
  LoadStep = [this] {
    LoadTexts();
    Skip([this] { RefreshUsers(); });
  };
  Bind();
}

void FUser::Bind() {
  keyAddUser.Click = [this] {
    FAddUser(TheApartment()).AddUser();
    RefreshUsers();
  };
  keyChangeUser.Click = [this] { ChangeSelected(); };
  // Nothing is asked and no refusal told: what has become of the user shows in the list.
  keyRemoveUser.Click = [this] {
    ActOnSelected([this](const String& user) { administration_->RemoveUser(user); });
  };
  keyActivateUser.Click = [this] {
    ActOnSelected([this](const String& user) { administration_->SetUserActive(user, 1); });
  };
  keyDeactivateUser.Click = [this] {
    ActOnSelected([this](const String& user) { administration_->SetUserActive(user, 0); });
  };
  keyOK.Click = [this] { Unload(); };
  keyClose.Click = [this] { Unload(); };
  lvwUser.RowDoubleClick = [this](int) { ChangeSelected(); };
  OnEnter(lvwUser, [this] { ChangeSelected(); });
}

std::vector<ui::KRXKey*> FUser::Buttons() {
  return {&keyAddUser,      &keyChangeUser,     &keyRemoveUser,
          &keyActivateUser, &keyDeactivateUser, &keyOK};
}

void FUser::LoadTexts() {
  LoadCaption(u"capOverviewUsers");
  Skip([this] { fraUser.Caption = Text(u"lblUser"); });
  LoadButtons();
  const std::array<ui::Control*, 2> texts{&fraUser, &lvwUser};
  LoadFonts(Buttons(), texts, {});
  LoadTitles();
  CalcPositions();
}

void FUser::LoadTitles() {
  std::vector<ui::RowList::Column> columns = lvwUser.Columns();
  for (ui::RowList::Column& column : columns)
    Skip([&] { column.Title = ReplaceAll(Text(column.Tag), u"&", u""); });
  lvwUser.Columns = std::move(columns);
}

// The list in its frame takes the room that the screen leaves beside the buttons.
void FUser::CalcPositions() {
  const std::vector<ui::KRXKey*> keys = Buttons();
  SizeCaptionAnyway();
  const Size key = SizeAlike(keys);
  // Rows grow with the buttons, but no further than a finger needs.
  lvwUser.RowMinHeight = std::clamp(Shared().ButtonMinHeight, 0.0f, ui::kFingerRow);
  Twips caption = service::kUnmeasuredLine;
  Skip([&] { caption = service::MeasureTextHeight(fraUser); });
  const Rect area = ThePlatform().WorkArea();
  const Twips top = idxCaption.Height() + kMargin;
  const Twips inset = caption + kButtonGap;  // of the list below the frame's upper edge
  const Twips pitch = key.Height + kButtonGap;
  const Twips keys_height = static_cast<Twips>(keys.size()) * pitch - kButtonGap;
  const auto fit = [](Twips wanted, Twips room) {
    return std::max(std::min(wanted, room), kSmallestList);
  };
  const Twips width = fit(kListWidth, area.Width - key.Width - 5 * kMargin);
  const Twips height = fit(std::max(kListHeight, keys_height - inset - kMargin),
                           area.Height - top - inset - 2 * kMargin);

  fraUser.Place({kMargin, top, width + 2 * kMargin, inset + height + kMargin});
  lvwUser.Place({2 * kMargin, top + inset, width, height});
  const Twips left = fraUser.Left() + fraUser.Width() + kMargin;
  Twips at = top;
  for (ui::KRXKey* const each : keys) {
    each->Left = left;
    each->Top = at;
    at += pitch;
  }
  const Twips bottom = std::max(fraUser.Top() + fraUser.Height(), top + keys_height);
  keyOK.Top = bottom - key.Height;
  Width = left + key.Width + kMargin;
  Height = bottom + kMargin;
  PlaceCaption();
  Skip([this] { SizeColumns(); });
}

void FUser::ShowUsers() {
  ShowModal();
}

String FUser::SelectedUser() const {
  const int row = lvwUser.SelectedRow();
  return row < 0 ? String() : String(lvwUser.Cell(row, 0));
}

template <class Action>
void FUser::ActOnSelected(Action action) {
  if (lvwUser.SelectedRow() < 0) return;
  action(SelectedUser());
  RefreshUsers();
}

void FUser::ChangeSelected() {
  ActOnSelected([this](const String& user) { FAddUser(TheApartment()).ChangeUser(user); });
}

void FUser::RefreshUsers() {
  const ui::Hourglass hourglass(ThePlatform());
  ShowRows(ReadUsers());
}

std::int32_t FUser::OwnLevel(const host::CurrentUser& current) {
  return current.ClassName.empty() ? 0 : classes_->GetUserClassInfo(current.ClassName).Level;
}

bool FUser::IsListed(const String& user, std::int32_t level, const host::CurrentUser& current,
                     std::int32_t own_level) {
  switch (administration_->GetAdministrationMode()) {
    case 0:
      return level < own_level || user == current.Name;
    case 1:
    case 2:
      return true;
    default:
      return false;
  }
}

// All rows are read before the list is touched, so that a failing call leaves nothing half done.
std::vector<FUser::Row> FUser::ReadUsers() {
  const host::CurrentUser current = administration_->GetCurrentUser();
  const std::int32_t own_level = OwnLevel(current);
  const std::vector<String> names = administration_->GetUserNames(String());
  StateTexts states;
  std::vector<Row> rows;
  rows.reserve(names.size());
  for (const String& name : names) {
    host::UserInfo info = administration_->GetUserInfo(name);
    const host::UserClassOfUser of_user = administration_->GetUserClass(name);
    host::UserClassInfo user_class = classes_->GetUserClassInfo(of_user.ClassName);
    if (!IsListed(name, user_class.Level, current, own_level)) continue;
    const String& state = states.Next(info.State, [this](StringView key) { return Text(key); });
    Row row;
    row.reserve(kColumns.size());
    row.push_back(name);
    row.push_back(state);
    row.push_back(std::move(info.FullName));
    row.push_back(std::move(user_class.DisplayText));
    row.push_back(ToString(info.RemainingLogOns));
    row.push_back(ToString(info.RenewPassword));
    row.push_back(std::move(info.Comment));
    rows.push_back(std::move(row));
  }
  return rows;
}

void FUser::ShowRows(std::vector<Row> rows) {
  const bool selected = lvwUser.SelectedRow() >= 0;
  const String user = SelectedUser();
  const int top = lvwUser.TopRow();
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [&](const Row& row) { return selected && row[0] == user; });
  const int row =
      found == rows.end() ? ui::RowList::kNoRow : static_cast<int>(found - rows.begin());
  lvwUser.SuspendDrawing();
  lvwUser.SetRows(std::move(rows));
  lvwUser.ResumeDrawing();
  lvwUser.SelectRow(row);
  lvwUser.TopRow = std::min(top, std::max(lvwUser.RowCount() - 1, 0));
  SizeColumns();
}

// All but the comments, which come last and keep their width.
void FUser::SizeColumns() {
  std::vector<ui::RowList::Column> columns = lvwUser.Columns();
  for (std::size_t i = 0; i + 1 < columns.size(); ++i) {
    const int column = static_cast<int>(i);
    columns[i].Width = std::max(lvwUser.TitleWidth(column), lvwUser.ContentWidth(column));
  }
  lvwUser.Columns = std::move(columns);
}

}  // namespace krx::users
