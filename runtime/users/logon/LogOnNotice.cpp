#include "runtime/users/logon/LogOnNotice.h"

#include <string>
#include <vector>

#include "runtime/core/KorvelError.h"
#include "runtime/core/LineReader.h"

namespace krx::runtime {
namespace {

// The lines without the empty ones at both ends.
String TextOf(LineReader lines) {
  String text;
  String empty_lines;
  while (lines.Next()) {
    const String line = lines.Text(lines.Line());
    if (!line.empty()) {
      text += empty_lines + line;
      empty_lines.clear();
    }
    if (!text.empty()) empty_lines += u'\n';
  }
  return text;
}

}  // namespace

String LogOnNotice::Read(StringView language) {
  const std::lock_guard lock(guard_);
  try {
    String text = Find(language);
    fault_.clear();
    return text;
  } catch (const Error& error) {
    Record(error.Description());
    throw;
  }
}

String LogOnNotice::Find(StringView language) {
  const std::filesystem::path& folder = management_.Store.Folder();
  while (!language.empty()) {
    if (auto text = ReadFile(folder / (u"log-on-notice." + String(language) + u".txt")))
      return std::move(*text);
    const std::size_t region = language.rfind(u'-');
    language = language.substr(0, region == StringView::npos ? 0 : region);
  }
  return ReadFile(folder / "log-on-notice.txt").value_or(String());
}

std::optional<String> LogOnNotice::ReadFile(const std::filesystem::path& file) {
  Files& files = management_.System.FileSystem;
  const FileStamp stamp = files.Stamp(file);
  if (!stamp.Exists) return std::nullopt;
  const String name = file.u16string();
  if (stamp.Size > kLargest) {
    throw KorvelError(kMalformedRules,
                      name + u" is longer than " + ToString(std::int32_t{kLargest}) + u" bytes");
  }
  const std::optional<std::string> bytes = files.Read(file);
  if (!bytes) return std::nullopt;
  return TextOf(LineReader(name, *bytes, kMalformedRules));
}

// Once, however often somebody opens a log-on with it.
void LogOnNotice::Record(const String& fault) {
  if (fault == fault_) return;
  management_.RecordFailure({u"", u"read notice", u"", u"refused, not shown: " + fault});
  fault_ = fault;
}

}  // namespace krx::runtime
