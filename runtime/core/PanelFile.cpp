#include "runtime/core/PanelFile.h"

#include <charconv>
#include <set>
#include <string>
#include <utility>

#include "base/Error.h"
#include "runtime/core/KorvelError.h"
#include "runtime/core/LineReader.h"
#include "runtime/core/PanelChoice.h"

namespace krx::runtime {

namespace {

class PanelLines {
 public:
  PanelLines(const String& file, std::string_view bytes, const krx::PanelSettings& before)
      : lines_(file, bytes, kMalformedTexts), choice_(before) {}

  krx::PanelSettings Read() {
    while (lines_.Next()) {
      if (!lines_.Line().empty() && lines_.Line().front() != '#') ReadLine(lines_.Line());
    }
    return choice_.Read();
  }

 private:
  void ReadLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) lines_.Refuse(u"\"=\" is missing");
    const std::string_view name = Trimmed(line.substr(0, equals));
    const std::string_view value = Trimmed(line.substr(equals + 1));
    if (!named_.emplace(name).second) lines_.Refuse(lines_.Text(name) + u" is set twice");
    try {
      Set(name, value);
    } catch (const Error& error) {
      if (error.Status() == kMalformedTexts) throw;
      lines_.Refuse(error.Description());
    }
  }

  void Set(std::string_view name, std::string_view value) {
    if (name == "Keyboard") {
      choice_.SetKeyboard(lines_.Text(value));
    } else if (name == "Theme") {
      choice_.SetTheme(lines_.Text(value));
    } else if (name == "ShowCountdown") {
      choice_.SetShowCountdown(YesOrNo(value));
    } else if (name == "FirstAnswerDelay") {
      choice_.SetFirstAnswerDelay(Seconds(value));
    } else {
      lines_.Refuse(u"there is no setting \"" + lines_.Text(name) + u"\"");
    }
  }

  bool YesOrNo(std::string_view value) {
    if (value != "true" && value != "false")
      lines_.Refuse(u"ShowCountdown is \"true\" or \"false\", not \"" + lines_.Text(value) + u"\"");
    return value == "true";
  }

  double Seconds(std::string_view value) {
    double seconds = 0;
    const char* const end = value.data() + value.size();
    const auto read = std::from_chars(value.data(), end, seconds, std::chars_format::fixed);
    if (read.ec != std::errc() || read.ptr != end)
      lines_.Refuse(u"FirstAnswerDelay is a number, not \"" + lines_.Text(value) + u"\"");
    return seconds;
  }

  LineReader lines_;
  PanelChoice choice_;
  std::set<std::string> named_;
};

}  // namespace

krx::PanelSettings ReadPanelFile(const String& file, std::string_view bytes,
                                 const krx::PanelSettings& before) {
  return PanelLines(file, bytes, before).Read();
}

}  // namespace krx::runtime
