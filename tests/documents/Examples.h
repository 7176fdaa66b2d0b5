#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace krx::tests {

// A script in the documents.
struct Example {
  std::string Page;  // its path from the root of the checkout
  int Number = 0;    // on its page, from 1
  std::string Code;

  // The script with its object `dialogs`, which some pages make once for all of their examples.
  std::string Whole() const;
  // A name for a test.
  std::string Name() const;
};

inline void PrintTo(const Example& example, std::ostream* out) {
  *out << example.Name();
}

std::vector<Example> Examples(const std::filesystem::path& root);

// One use of a member of a dialog object.
struct Use {
  std::string Member;
  bool Assigned = false;  // a property that is set
  std::size_t Arguments = 0;
  bool operator==(const Use&) const = default;
};

// All uses in a script, in their order.
std::vector<Use> Uses(const std::string& script);

}  // namespace krx::tests
