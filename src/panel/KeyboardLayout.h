#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/String.h"

namespace krx::panel {

// What a key of a layout does.
enum class Act {
  Type,
  Shift,
  CapsLock,
  Page,
  Hide,
  Space,
  Backspace,
  Delete,
  Enter,
  Tab,
  Left,
  Right,
  Up,
  Down,
  Home,
  End,
};

// The characters of a key in one state of Shift: its own, and those that holding it offers.
struct Characters {
  String Own;
  std::vector<String> Held;
};

struct LayoutKey {
  panel::Act Act = Act::Type;
  Characters Plain;
  Characters Shifted;
  float Width = 1;  // in widths of an ordinary key
};

struct LayoutRow {
  bool Spare = false;  // left out where the screen is low; all it has is found elsewhere
  std::vector<LayoutKey> Keys;
};

struct KeyboardLayout {
  String Page;                     // what the key that leads here bears
  std::map<String, String> Names;  // of keys with signs, in the language of the layout
  std::vector<LayoutRow> Rows;
  float Width = 0;  // of every row, in widths of an ordinary key

  std::size_t RowCount(bool spare) const;
};

// A layout that cannot be used; tells the line, counted from 1, and the reason.
class LayoutError : public std::runtime_error {
 public:
  LayoutError(int line, const std::string& reason);
};

// Reads a layout, in the format that the layouts themselves describe (layouts/en.txt). What is
// malformed anywhere is refused as a whole by LayoutError.
KeyboardLayout ParseLayout(std::string_view utf8);

// The key of a text in KeyboardLayout::Names; empty for keys that bear their characters.
StringView NameOf(Act act);

}  // namespace krx::panel
