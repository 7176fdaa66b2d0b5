#include <gtest/gtest.h>

#include <windows.h>
#include <winternl.h>

#include <cstddef>
#include <vector>

#include "TestForm.h"
#include "msgbox/FMessageBox.h"
#include "service/KRXDialog.h"

namespace krx::test {

namespace {

constexpr int kWarmUp = 50;
constexpr int kBoxes = 1000;

BOOL CALLBACK CountWindow(HWND, LPARAM data) {
  ++*reinterpret_cast<int*>(data);
  return TRUE;
}

int Windows() {
  int count = 0;
  EnumThreadWindows(GetCurrentThreadId(), CountWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

#ifdef _WIN64
// The process's own table of GDI objects; the counting functions of the system are not everywhere.
struct GdiEntry {
  void* Object;
  WORD Owner;
  WORD Count;
  WORD Upper;
  WORD Type;
  void* User;
};
static_assert(sizeof(GdiEntry) == 24);
constexpr std::size_t kTableInBlock = 0xF8;
constexpr int kEntries = 0x4000;

int GdiObjects() {
  PROCESS_BASIC_INFORMATION process{};
  NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof process,
                            nullptr);
  const auto* block = reinterpret_cast<const std::byte*>(process.PebBaseAddress);
  const auto* table = *reinterpret_cast<const GdiEntry* const*>(block + kTableInBlock);
  int used = 0;
  for (int i = 0; i < kEntries; ++i)
    used += table[i].Type != 0;
  return used;
}
#else
int GdiObjects() {
  return 0;  // the table lies in the 64-bit process only
}
#endif

struct Handle {
  ULONG Owner;
  BYTE Type;
  BYTE Flags;
  USHORT Value;
  PVOID Object;
  ULONG Access;
};

int KernelHandles() {
  constexpr int kHandleInformation = 16;
  std::vector<std::byte> buffer(1 << 20);
  ULONG length = 0;
  while (NtQuerySystemInformation(static_cast<SYSTEM_INFORMATION_CLASS>(kHandleInformation),
                                  buffer.data(), static_cast<ULONG>(buffer.size()), &length) < 0)
    buffer.resize(buffer.size() * 2);
  const ULONG count = *reinterpret_cast<const ULONG*>(buffer.data());
  const auto* handles = reinterpret_cast<const Handle*>(buffer.data() + sizeof(void*));
  int own = 0;
  for (ULONG i = 0; i < count; ++i)
    own += handles[i].Owner == GetCurrentProcessId();
  return own;
}

// Every box closes itself as soon as it is shown.
void OpenBoxes(service::Apartment& apartment, int count) {
  for (int i = 0; i < count; ++i) {
    msgbox::FMessageBox box(apartment);
    box.DisplayIcon(3 | 32);
    box.SetFonts();
    box.SetTexts(u"Text of the box", 3 | 32, u"Title", u"help", 0);
    box.CalcPositions();
    box.Paint = [&] { box.Unload(); };
    box.ShowModal();
  }
}

TEST(Leaks, AThousandBoxesLeaveNothingBehind) {
  win32::Win32Platform platform;
  FakeRuntime runtime;
  service::Apartment apartment(platform, runtime);
  const auto dialog = service::KRXDialog::Create(apartment);
  OpenBoxes(apartment, kWarmUp);
  const int windows = Windows();
  const int objects = GdiObjects();
  const int handles = KernelHandles();
  ASSERT_GT(handles, 0);
  OpenBoxes(apartment, kBoxes);
  EXPECT_EQ(Windows(), windows);
  EXPECT_EQ(GdiObjects(), objects);
  EXPECT_EQ(KernelHandles(), handles);
  EXPECT_EQ(GlobalFindAtomW(L"FMessageBox"), 0);
  EXPECT_EQ(GlobalFindAtomW(L"keyButton(1)"), 0);
}

TEST(Leaks, TheLastPlatformTakesTheWindowClassesAway) {
  WNDCLASSEXW info{};
  info.cbSize = sizeof info;
  const HINSTANCE module = GetModuleHandleW(nullptr);
  {
    const win32::Win32Platform first;
    { const win32::Win32Platform second; }
    EXPECT_TRUE(GetClassInfoExW(module, L"KRXForm", &info));
  }
  EXPECT_FALSE(GetClassInfoExW(module, L"KRXForm", &info));
  EXPECT_FALSE(GetClassInfoExW(module, L"KRXPane", &info));
}

}  // namespace

}  // namespace krx::test
