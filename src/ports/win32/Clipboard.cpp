#include "ports/win32/Clipboard.h"

#include <algorithm>

namespace krx::win32 {

namespace {

// A text in memory that the clipboard can take over; null when there is none left.
HGLOBAL Shared(StringView text) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  auto* const copy = memory ? static_cast<wchar_t*>(GlobalLock(memory)) : nullptr;
  if (!copy) return memory;
  std::copy(WideData(text), WideData(text) + text.size(), copy);
  copy[text.size()] = 0;
  GlobalUnlock(memory);
  return memory;
}

}  // namespace

void CopyText(HWND window, StringView text) {
  if (!OpenClipboard(window)) return;
  EmptyClipboard();
  const HGLOBAL memory = Shared(text);
  if (memory && !SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);
  CloseClipboard();
}

}  // namespace krx::win32
