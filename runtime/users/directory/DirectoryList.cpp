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

// The whole of a first list is waited for where the names cannot be told before.
std::chrono::milliseconds LongWait(const DirectoryRules& rules) {
  return std::chrono::seconds(rules.AnswerSeconds) + kSecondServer;
}

}  // namespace

std::shared_ptr<const UsersByName> DirectoryList::Known() const {
  const std::lock_guard lock(state_->Guard);
  return state_->Users;
}

bool DirectoryList::IsFresh(const DirectoryRules& rules) const {
  const std::lock_guard lock(state_->Guard);
  return state_->ReadBy == rules &&
         SteadyClock::now() - state_->ReadAt < std::chrono::minutes(rules.ListMinutes);
}

std::shared_ptr<const UsersByName> DirectoryList::Read(const DirectoryService::Access& access) {
  const DirectoryRules& rules = access->Rules;
  if (!rules.CanSearch()) return std::make_shared<const UsersByName>();
  if (IsFresh(rules) || service_.AreAllSilent(rules)) return Known();
  bool is_first = false;
  {
    const std::lock_guard lock(state_->Guard);
    if (std::exchange(state_->Reading, true)) return state_->Users;
    is_first = state_->ReadBy != rules;
  }
  try {
    ReadAll(access, is_first);
  } catch (const std::exception&) {
    // A list that cannot be read hides nobody who stands in the older one; log-ons say why.
    EndReading(*state_);
  }
  return Known();
}

void DirectoryList::ReadAll(const DirectoryService::Access& access, bool is_first) {
  std::chrono::milliseconds patience = kShortWait;
  if (is_first) {
    using Names = std::optional<std::vector<DirectoryUser>>;
    Names names = service_.Ask<Names>(access, [](DirectoryTalk& talk) { return talk.Names(); });
    patience = names ? std::chrono::milliseconds(0) : LongWait(access->Rules);
    if (names) Publish(*state_, std::move(*names));
  }
  service_.Threads().Run([&service = service_, access, is_first,
                          state = state_] { Fill(service, access, is_first, *state); },
                         patience);
}

void DirectoryList::EndReading(State& state) {
  const std::lock_guard lock(state.Guard);
  state.Reading = false;
}

void DirectoryList::Publish(State& state, std::vector<DirectoryUser> users) {
  auto by_name = std::make_shared<UsersByName>();
  for (DirectoryUser& user : users) {
    String name = user.Name;
    by_name->emplace(std::move(name), std::move(user));
  }
  const std::lock_guard lock(state.Guard);
  state.Users = std::move(by_name);
}

void DirectoryList::Fill(DirectoryService& service, const DirectoryService::Access& access,
                         bool answers, State& state) {
  const std::lock_guard turn(state.Turn);
  try {
    // Nobody waits for all of it, so it may take its time once a server is found that answers.
    if (!answers)
      service.Ask<bool>(access, [](DirectoryTalk& talk) { return talk.Names().has_value(); });
    auto patient = std::make_shared<DirectoryAccess>();
    patient->Rules = access->Rules;
    patient->Rules.AnswerSeconds = std::max(access->Rules.AnswerSeconds, kWholeListSeconds);
    if (access->SearchPassword) patient->SearchPassword.emplace(access->SearchPassword->View());
    Publish(state, service.Ask<std::vector<DirectoryUser>>(
                       patient, [](DirectoryTalk& talk) { return talk.All(); }));
    const std::lock_guard lock(state.Guard);
    state.ReadBy = access->Rules;
    state.ReadAt = SteadyClock::now();
  } catch (const std::exception&) {
    // The older list stays.
  }
  EndReading(state);
}

bool DirectoryList::State::IsReading() {
  const std::lock_guard lock(Guard);
  return Reading;
}

void DirectoryList::AwaitReading(const DirectoryRules& rules) {
  if (!state_->IsReading()) return;
  service_.Threads().Run(
      [state = state_] {
        // Once more where the reading has not had its turn yet.
        while (state->IsReading())
          const std::lock_guard turn(state->Turn);
      },
      LongWait(rules));
}

}  // namespace krx::runtime
