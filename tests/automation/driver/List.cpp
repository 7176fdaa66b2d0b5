#include "driver/List.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include "driver/Input.h"

namespace krx::drive {

namespace {

constexpr std::size_t kLongestText = 4096;

// Memory of another process, in which a message of the list finds its argument.
class ForeignMemory {
 public:
  ForeignMemory(HWND window, std::size_t size) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
    if (process_) memory_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT, PAGE_READWRITE);
    if (memory_) return;
    if (process_) CloseHandle(process_);
    throw std::runtime_error("the list's process gives no memory");
  }
  ~ForeignMemory() {
    VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
    CloseHandle(process_);
  }
  ForeignMemory(const ForeignMemory&) = delete;
  ForeignMemory& operator=(const ForeignMemory&) = delete;

  char* At(std::size_t offset = 0) const { return static_cast<char*>(memory_) + offset; }
  void Write(const void* data, std::size_t size) const {
    if (!WriteProcessMemory(process_, memory_, data, size, nullptr))
      throw std::runtime_error("the list's process cannot be written to");
  }
  void Read(std::size_t offset, void* data, std::size_t size) const {
    if (!ReadProcessMemory(process_, At(offset), data, size, nullptr))
      throw std::runtime_error("the list's process cannot be read");
  }

 private:
  HANDLE process_ = nullptr;
  void* memory_ = nullptr;
};

DWORD_PTR Send(HWND window, UINT message, WPARAM w, LPARAM l) {
  DWORD_PTR answer = 0;
  if (!SendMessageTimeoutW(window, message, w, l, SMTO_NORMAL, static_cast<UINT>(kPatience.count()),
                           &answer))
    throw std::runtime_error("the list does not answer");
  return answer;
}

LPARAM Argument(const ForeignMemory& memory) {
  return reinterpret_cast<LPARAM>(memory.At());
}

// Asks for a text by an item structure that stands in front of the text's place.
template <class Item>
std::wstring AskText(HWND window, UINT message, WPARAM w, Item item) {
  const ForeignMemory memory(window, sizeof item + kLongestText * sizeof(wchar_t));
  item.pszText = reinterpret_cast<wchar_t*>(memory.At(sizeof item));
  item.cchTextMax = static_cast<int>(kLongestText);
  memory.Write(&item, sizeof item);
  Send(window, message, w, Argument(memory));
  std::array<wchar_t, kLongestText> text{};
  memory.Read(sizeof item, text.data(), sizeof text);
  text.back() = 0;
  return text.data();
}

}  // namespace

int List::Ask(UINT message, WPARAM w, LPARAM l) const {
  return static_cast<int>(Send(window_.Handle(), message, w, l));
}

int List::Count() const {
  return Ask(LVM_GETITEMCOUNT);
}

int List::Columns() const {
  const auto header = reinterpret_cast<HWND>(Send(window_.Handle(), LVM_GETHEADER, 0, 0));
  return static_cast<int>(Send(header, HDM_GETITEMCOUNT, 0, 0));
}

std::wstring List::Title(int column) const {
  LVCOLUMNW wanted{};
  wanted.mask = LVCF_TEXT;
  return AskText(window_.Handle(), LVM_GETCOLUMNW, static_cast<WPARAM>(column), wanted);
}

std::wstring List::Cell(int row, int column) const {
  if (row < 0 || row >= Count())
    throw std::runtime_error("the list has no row " + std::to_string(row));
  LVITEMW wanted{};
  wanted.iSubItem = column;
  return AskText(window_.Handle(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), wanted);
}

std::vector<std::wstring> List::Column(int column) const {
  std::vector<std::wstring> texts;
  const int rows = Count();
  for (int row = 0; row < rows; ++row)
    texts.push_back(Cell(row, column));
  return texts;
}

int List::Find(const std::wstring& text, int column) const {
  int found = 0;
  const bool there = Within(kPatience, [&] {
    // The list may get shorter while it is read.
    for (int row = 0; row < Count(); ++row) {
      try {
        found = row;
        if (Cell(row, column) == text) return true;
      } catch (const std::runtime_error&) {
        return false;
      }
    }
    return false;
  });
  if (!there) throw std::runtime_error("no row shows " + Narrow(text));
  return found;
}

int List::Selected() const {
  return Ask(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
}

int List::Top() const {
  return Ask(LVM_GETTOPINDEX);
}

int List::InSight() const {
  return Ask(LVM_GETCOUNTPERPAGE);
}

int List::ColumnWidth(int column) const {
  return Ask(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column));
}

RECT List::RowBounds(int row) const {
  RECT bounds{LVIR_BOUNDS, 0, 0, 0};
  const ForeignMemory memory(window_.Handle(), sizeof bounds);
  memory.Write(&bounds, sizeof bounds);
  if (!Send(window_.Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row), Argument(memory)))
    throw std::runtime_error("the list has no row " + std::to_string(row));
  memory.Read(0, &bounds, sizeof bounds);
  MapWindowPoints(window_.Handle(), nullptr, reinterpret_cast<POINT*>(&bounds), 2);
  return bounds;
}

POINT List::Middle(int row) const {
  Ask(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
  const RECT bounds = RowBounds(row);
  RECT inside{};
  GetClientRect(window_.Handle(), &inside);
  MapWindowPoints(window_.Handle(), nullptr, reinterpret_cast<POINT*>(&inside), 2);
  RECT seen{};
  if (!IntersectRect(&seen, &bounds, &inside))
    throw std::runtime_error("row " + std::to_string(row) + " cannot be brought into sight");
  return {(seen.left + seen.right) / 2, (seen.top + seen.bottom) / 2};
}

void List::Click(int row) const {
  ClickMouse(MouseButton::Left, Middle(row));
}

void List::DoubleClick(int row) const {
  DoubleClickMouse(MouseButton::Left, Middle(row));
}

void List::WaitForCount(int count) const {
  if (!Within(kPatience, [&] { return Count() == count; }))
    throw std::runtime_error("the list has " + std::to_string(Count()) + " rows, not " +
                             std::to_string(count));
}

void List::WaitForSelected(int row) const {
  if (!Within(kPatience, [&] { return Selected() == row; }))
    throw std::runtime_error("row " + std::to_string(Selected()) + " is selected, not " +
                             std::to_string(row));
}

}  // namespace krx::drive
