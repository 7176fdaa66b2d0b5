#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "base/Error.h"
#include "com/Text.h"
#include "runtime/users/tool/Commands.h"
#include "runtime/users/tool/Console.h"

namespace krx::runtime {
namespace {

int Execute(const Command& command, const Arguments& arguments) {
  try {
    return CarryOut(command, arguments);
  } catch (const Error& failure) {
    PrintError(u"Nothing was done: " + failure.Description() + u"\n");
  } catch (const std::exception& failure) {
    const std::string reason = failure.what();
    PrintError(u"Nothing was done: " + String(reason.begin(), reason.end()) + u"\n");
  }
  return kRefused;
}

int Run(std::vector<String> words) {
  const CommandLine line = ParseCommandLine(std::move(words));
  if (line.Arguments) return Execute(*line.Command, *line.Arguments);
  const String usage = UsageOf(line.Command);
  if (!line.Helps) {
    PrintError(usage);
    return kWrongUsage;
  }
  Print(line.Command == nullptr ? usage : usage + String(line.Command->Help));
  return kDone;
}

}  // namespace
}  // namespace krx::runtime

int wmain(int count, wchar_t** arguments) {
  const krx::runtime::Utf8Console console;
  std::vector<krx::String> texts;
  for (int i = 1; i < count; ++i)
    texts.push_back(krx::com::FromWide(arguments[i]));
  return krx::runtime::Run(std::move(texts));
}
