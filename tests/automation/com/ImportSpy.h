#pragma once

namespace krx::tests {

// Counts what a module calls of COM, windows and drawing that no thread may call while it ends: the
// places in the module's import table lead here as long as this lives. One at a time.
class ImportSpy {
 public:
  explicit ImportSpy(const wchar_t* module);
  ~ImportSpy();
  ImportSpy(const ImportSpy&) = delete;
  ImportSpy& operator=(const ImportSpy&) = delete;

  static long Calls();
  static void Reset();

 private:
  const wchar_t* module_;
};

}  // namespace krx::tests
