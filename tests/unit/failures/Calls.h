#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "failures/Plant.h"

namespace krx::test {

// One call of a dialog method with an operator who answers.
struct PlantCall {
  std::string Name;  // of the method
  // Queues what the operator does, for one call.
  std::function<void(Plant&)> Prepare;
  // Opens the dialog and tells its result.
  std::function<std::string(Plant&)> Open;
};

inline void PrintTo(const PlantCall& call, std::ostream* out) {
  *out << call.Name;
}

// One for each method of the interface, by the three groups of dialogs.
std::vector<PlantCall> BoxCalls();
std::vector<PlantCall> UserCalls();
std::vector<PlantCall> FileCalls();

}  // namespace krx::test
