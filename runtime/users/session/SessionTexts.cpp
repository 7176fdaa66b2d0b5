#include "runtime/users/session/SessionTexts.h"

#include "base/Error.h"

namespace krx::runtime {
namespace {

constexpr std::int32_t kUserTexts = -103;

void Replace(String& text, StringView place, StringView value) {
  const std::size_t at = text.find(place);
  if (at != String::npos) text.replace(at, place.size(), value);
}

// Texts that cannot be read keep nobody from being logged off.
String TextOf(Languages& languages) try {
  return languages.Text(u"msgIdleLogOff", kUserTexts);
} catch (const Error&) {
  return u"{user}: {seconds}";
}

}  // namespace

String IdleText(Languages& languages, const String& user, std::chrono::seconds left) {
  String text = TextOf(languages);
  Replace(text, u"{seconds}", ToString(static_cast<std::int32_t>(left.count())));
  Replace(text, u"{user}", user);  // last, as a name may be made of anything
  return text;
}

String GreetingText(Languages& languages, const LogOnHistory& history, const String& last) {
  String text = languages.Text(history.LastAt ? u"msgLastLogOn" : u"msgNoLastLogOn", kUserTexts);
  Replace(text, u"{time}", last);
  Replace(text, u"{failures}", ToString(history.FailuresSince));
  return text;
}

}  // namespace krx::runtime
