#include "runtime/users/directory/DirectoryList.h"

#include <algorithm>
#include <utility>

namespace krx::runtime {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kShortWait{900};
// The second server of two has so long when the first one kept silent.
constexpr std::chrono::seconds kSecondServer{1};
constexpr std::int32_t kWholeListSeconds = 300;  // for a list that nobody waits for
constexpr std::chrono::seconds kStillAnswers{30};

std::chrono::milliseconds LongWait(const DirectoryRules& rules) {
  return std::chrono::seconds(rules.AnswerSeconds) + kSecondServer;
}

// The list so far goes on telling what it knows of the users.
void TakeDetails(const UsersByName& known, DirectoryUser& user) {
  const auto found = known.find(user.Name);
  if (found == known.end()) return;
  String class_name = std::move(user.ClassName);
  user = found->second;
  user.ClassName = std::move(class_name);
}

}  // namespace

bool DirectoryList::Mark::IsFresh(const DirectoryRules& rules) const {
  return By == rules && SteadyClock::now() - At < std::chrono::minutes(rules.ListMinutes);
}

bool DirectoryList::State::IsReading() {
  const std::lock_guard lock(Guard);
  return Reading;
}

std::shared_ptr<const UsersByName> DirectoryList::Known() const {
  const std::lock_guard lock(state_->Guard);
  return state_->Users;
}

bool DirectoryList::IsFresh(const DirectoryRules& rules) const {
  const std::lock_guard lock(state_->Guard);
  return state_->Whole.IsFresh(rules);
}

std::shared_ptr<const UsersByName> DirectoryList::Read(const Access& access) {
  const DirectoryRules& rules = access->Rules;
  if (!rules.CanSearch()) return std::make_shared<const UsersByName>();
  if (IsFresh(rules) || service_.AreAllSilent(rules)) return Known();
  bool has_names = false;
  bool has_older = false;
  {
    const std::lock_guard lock(state_->Guard);
    if (std::exchange(state_->Reading, true)) return state_->Users;
    has_names = state_->Named.IsFresh(rules);
    has_older = state_->Named.By == rules;
  }
  if (has_names)
    Start(access, Part::Whole, std::chrono::milliseconds(0));
  else
    Start(access, Part::Names, has_older ? kShortWait : LongWait(rules));
  return Known();
}

void DirectoryList::Start(const Access& access, Part part, std::chrono::milliseconds patience) {
  try {
    service_.Threads().Run([&service = service_, access, part,
                            state = state_] { Work(service, access, part, *state); },
                           patience);
  } catch (const std::exception&) {
    // A list that cannot be read hides nobody who stands in the older one; log-ons say why.
    const std::lock_guard lock(state_->Guard);
    state_->Reading = false;
  }
}

// What cannot be read leaves the older list; log-ons say why.
void DirectoryList::Work(DirectoryService& service, const Access& access, Part part, State& state) {
  const std::lock_guard turn(state.Turn);
  try {
    if (part == Part::Whole)
      ReadWhole(service, access, HasJustAnswered(access, state), state);
    else if (!ReadNames(service, access, state))
      ReadWhole(service, access, true, state);
  } catch (const std::exception&) {
  }
  const std::lock_guard lock(state.Guard);
  state.Reading = false;
}

// False where the groups do not tell names.
bool DirectoryList::ReadNames(DirectoryService& service, const Access& access, State& state) {
  using Names = std::optional<std::vector<DirectoryUser>>;
  Names names = service.Ask<Names>(access, [](DirectoryTalk& talk) { return talk.Names(); });
  const bool told = names.has_value();
  if (told) Publish(state, access, std::move(*names), Part::Names);
  return told;
}

bool DirectoryList::HasJustAnswered(const Access& access, State& state) {
  const std::lock_guard lock(state.Guard);
  return state.Named.By == access->Rules && SteadyClock::now() - state.Named.At < kStillAnswers;
}

// Nobody waits for all of it, so it may take its time once a server is found that answers.
void DirectoryList::ReadWhole(DirectoryService& service, const Access& access, bool answers,
                              State& state) {
  if (!answers)
    service.Ask<bool>(access, [](DirectoryTalk& talk) { return talk.Names().has_value(); });
  auto patient = std::make_shared<DirectoryAccess>();
  patient->Rules = access->Rules;
  patient->Rules.AnswerSeconds = std::max(access->Rules.AnswerSeconds, kWholeListSeconds);
  if (access->SearchPassword) patient->SearchPassword.emplace(access->SearchPassword->View());
  Publish(state, access,
          service.Ask<std::vector<DirectoryUser>>(patient,
                                                  [](DirectoryTalk& talk) { return talk.All(); }),
          Part::Whole);
}

void DirectoryList::Publish(State& state, const Access& access, std::vector<DirectoryUser> users,
                            Part part) {
  std::shared_ptr<const UsersByName> before;
  {
    const std::lock_guard lock(state.Guard);
    before = state.Users;
  }
  auto by_name = std::make_shared<UsersByName>();
  for (DirectoryUser& user : users) {
    if (part == Part::Names) TakeDetails(*before, user);
    String name = user.Name;
    // Servers mostly tell them in some order.
    by_name->emplace_hint(by_name->end(), std::move(name), std::move(user));
  }
  const std::lock_guard lock(state.Guard);
  state.Users = std::move(by_name);
  state.Named = {access->Rules, SteadyClock::now()};
  if (part == Part::Whole) state.Whole = state.Named;
  state.AskedFor.clear();
}

void DirectoryList::AwaitWhole(const Access& access, const String& name) {
  const DirectoryRules& rules = access->Rules;
  bool begins = false;
  {
    const std::lock_guard lock(state_->Guard);
    if (!state_->Reading) {
      if (!state_->Named.IsFresh(rules) || state_->Whole.IsFresh(rules)) return;
      const bool is_alone = state_->AskedFor.empty() || state_->AskedFor == name;
      state_->AskedFor = name;
      if (is_alone) return;
      begins = state_->Reading = true;
    }
  }
  if (begins) return Start(access, Part::Whole, LongWait(rules));
  service_.Threads().Run(
      [state = state_] {
        // Once more where the reading has not had its turn yet.
        while (state->IsReading())
          const std::lock_guard turn(state->Turn);
      },
      LongWait(rules));
}

}  // namespace krx::runtime
