#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace krx::failures {

// A function of the system that a module imports, and what stands in its place while its calls are
// counted and failed.
struct Import {
  const char* Name;
  void* Replacement;
};

// The functions whose calls are failed, each by the value and the code that its documents give for
// a failure.
const std::vector<Import>& FailingImports();

// The names of those that are spared; the table says why.
const std::vector<std::string>& SparedImports();

// The calls of all failing imports of one module.
class FailingCalls {
 public:
  // From now on the module's calls lead here.
  static void Redirect(HMODULE module);
  // Counts them anew; the n-th fails, once or with all that follow. 0: none.
  static void Fail(long n, bool for_good);
  // No call fails from now on; tells how many there have been.
  static long Stop();
  // The function that failed first; empty when none has.
  static std::string FirstFailed();
  // For the replacements: whether this call of the function fails.
  static bool IsDue(const char* function);
};

}  // namespace krx::failures
